# Plots how long each key took that toolkit_keys_bench wrote down:
#     gnuplot -c benchmarks/keys.gp keys.tsv keys.png
set terminal pngcairo size 1000,360 font 'Liberation Sans,10'
set output ARG2
set datafile separator '\t'
set xlabel 'keys, at 20 a second'
set ylabel 'milliseconds to the last pixel'
set logscale y
set yrange [0.03:20]
set grid y lc rgb '#dddddd'
set key outside right top Left reverse samplen 1
keys(name, items) = sprintf("< awk -F'\t' '$1 == \"%s\" && $2 == %d { print ++n \"\t\" $3 / 1000 }' %s", \
                            name, items, ARG1)
plot keys('toolkit answers', 100) title 'answers, 100 items' pt 7 ps 0.25 lc rgb '#9bb7d4', \
     keys('toolkit answers', 100000) title 'answers, 100,000 items' pt 7 ps 0.25 lc rgb '#00468b', \
     keys('toolkit numbers', 100000) title 'numbers, 100,000 entries' pt 7 ps 0.25 lc rgb '#b45f06', \
     keys('toolkit form', 10000) title 'form, 10,000 items' pt 7 ps 0.25 lc rgb '#38761d', \
     8 title 'aim for lists' lc rgb '#c00000' dt 2
