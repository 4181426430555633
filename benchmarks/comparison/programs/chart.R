# The chart of 480 marks by R: Rscript chart.R svg|png|pdf OUTPUT
arguments <- commandArgs(trailingOnly = TRUE)
switch(arguments[1],
       svg = svg(arguments[2], 8.3, 4.9),
       png = png(arguments[2], 800, 466),
       pdf = pdf(arguments[2], 8.3, 4.9))
mark <- 0:479
x <- mark %% 24 * 10 + 5
y <- -(mark %/% 24)
plot(x, y, pch = 16, col = "#C00000", xlim = c(0, 240), ylim = c(-21, 1), axes = FALSE, ann = FALSE)
rect(0, -(0:19) - 0.2, 240, -(0:19) + 0.2)
axis(1, seq(0, 240, 40))
text(x, y - 0.45, mark, cex = 0.5)
legend("bottomright", "marks", pch = 16, col = "#C00000")
invisible(dev.off())
