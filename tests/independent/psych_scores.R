# Scores questionnaires by the package psych (r-cran-psych, r-cran-psychtools) and by `tessalink batch`, and compares
# them: its own data sets, and answers by chance with random keys.
#
#     Rscript tests/independent/psych_scores.R build/release/apps/tessalink/tessalink
#
# What psych cannot do, weights and mixed ranges, is compared with another scorer by the tests.
suppressMessages(library(psych))
suppressMessages(library(psychTools))
program <- commandArgs(TRUE)[1]
tolerance <- 1e-9

quoted <- function(text) paste0('"', text, '"')

# The folder of a questionnaire with these items, range of answers and keys ("-item" is reversed).
make_folder <- function(folder, items, lowest, highest, keys, method) {
    dir.create(folder)
    item_texts <- paste0('{"id": ', quoted(items), ', "text": "x", "responses": "r"}', collapse = ", ")
    scale_text <- function(name) {
        key <- keys[[name]]
        parts <- ifelse(startsWith(key, "-"),
                        paste0('{"item": ', quoted(sub("^-", "", key)), ', "reverse": true}'), quoted(key))
        sprintf('{"id": "%s", "score": "%s", "items": [%s], "missing": {"allowed": %d, "replace": "none"}}',
                name, method, paste(parts, collapse = ", "), length(key) - 1)
    }
    choices <- paste0('{"code": "', lowest:highest, '", "label": "', lowest:highest, '", "value": ', lowest:highest, "}",
                      collapse = ", ")
    writeLines(sprintf('{"id": "q", "title": "q", "version": "1", "language": "en", "licence": "none", "source": "none",
        "responseSets": {"r": {"choices": [%s]}}, "items": [%s], "scales": [%s]}', choices, item_texts,
        paste(sapply(names(keys), scale_text), collapse = ", ")), file.path(folder, "questionnaire.json"))
}

compare <- function(what, answers, lowest, highest, keys) {
    base <- tempfile()
    make_folder(base, names(answers), lowest, highest, keys, "mean")
    table <- file.path(base, "answers.csv")
    write.csv(cbind(id = seq_len(nrow(answers)), answers), table, row.names = FALSE, na = "", quote = FALSE)
    out <- file.path(base, "out")
    status <- system2(program, c("batch", base, table, "-o", out, "--no-reports", "--progress", "none"), stderr = FALSE)
    stopifnot(status == 0)
    ours <- read.csv(file.path(out, "scores.csv"))
    theirs <- scoreItems(keys, answers, totals = FALSE, impute = "none", min = lowest, max = highest)$scores
    worst <- 0
    for (name in names(keys)) {
        a <- ours[[name]]
        b <- theirs[, name]
        b[is.nan(b)] <- NA
        stopifnot(identical(is.na(a), is.na(b)))
        worst <- max(worst, abs(a - b), na.rm = TRUE)
    }
    cat(sprintf("%s: %d persons, %d scales, largest difference %.2g\n", what, nrow(answers), length(keys), worst))
    stopifnot(worst <= tolerance)
    unlink(base, recursive = TRUE)
}

compare("bfi", bfi[, 1:25], 1, 6, list(
    Agree = c("-A1", "A2", "A3", "A4", "A5"), Conscientious = c("C1", "C2", "C3", "-C4", "-C5"),
    Extraversion = c("-E1", "-E2", "E3", "E4", "E5"), Neuroticism = c("N1", "N2", "N3", "N4", "N5"),
    Openness = c("O1", "-O2", "O3", "O4", "-O5")))
moods <- msq[, 1:70]
names(moods) <- paste0("M", 1:70)  # some of its names are no names of variables
compare("msq", moods, 0, 3, list(Nine = paste0("M", 1:9), Mixed = paste0(c("", "-"), "M", 11:30)))
set.seed(16)
for (round in 1:20) {
    count <- sample(3:40, 1)
    lowest <- sample(-3:1, 1)
    highest <- lowest + sample(1:6, 1)
    answers <- as.data.frame(matrix(sample(c(lowest:highest, NA), count * 200, TRUE), 200))
    names(answers) <- paste0("Q", seq_len(count))
    keys <- lapply(1:3, function(i) {
        key <- sample(names(answers), sample(2:count, 1))
        paste0(sample(c("", "-"), length(key), TRUE), key)
    })
    names(keys) <- c("First", "Second", "Third")
    compare(paste("by chance", round), answers, lowest, highest, keys)
}
