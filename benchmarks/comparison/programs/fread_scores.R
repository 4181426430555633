# Reads a table of answers, and with "scores" adds the means of ten scales and writes them.
arguments <- commandArgs(TRUE)
suppressMessages(library(data.table))
setDTthreads(1)
if (arguments[1] != "nothing") {
    answers <- fread(arguments[2], showProgress = FALSE)
    if (arguments[1] == "scores") {
        scales <- lapply(0:9, function(k) paste0("I", seq(k + 1, 50, 10)))
        scores <- data.table(id = answers$id)
        for (k in 1:10) set(scores, j = paste0("S", k), value = rowMeans(answers[, scales[[k]], with = FALSE]))
        fwrite(scores, arguments[3])
    }
}
