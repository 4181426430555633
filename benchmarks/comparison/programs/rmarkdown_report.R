# Makes reports of one page with two graphs by R Markdown: rmarkdown_report.R FOLDER COUNT.
arguments <- commandArgs(TRUE)
folder <- arguments[1]
source <- file.path(folder, "report.Rmd")
writeLines(c("---", "output: rtf_document", "params:", "  shift: 0", "---", "",
    "```{r, echo = FALSE, message = FALSE}", "library(ggplot2)",
    "scores <- data.frame(scale = c('E', 'A', 'C', 'S', 'I'), score = 35 + (params$shift * 7 + 11 * (0:4)) %% 31)",
    "ggplot(scores, aes(score, scale)) + geom_col()",
    "ggplot(scores, aes(scale, score, group = 1)) + geom_line() + geom_point()", "```", "",
    "The highest score is `r max(scores$score)`."), source)
for (number in seq_len(as.integer(arguments[2]))) {
    rmarkdown::render(source, params = list(shift = number), quiet = TRUE, output_dir = folder)
}
