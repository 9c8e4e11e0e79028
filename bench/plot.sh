#!/usr/bin/env bash
# Draws the cost of one `text` lookup against the store size, beside one bare
# map descent over the same keys, from the data file that zalt_lts_bench
# writes with --results_dir.
#   bench/plot.sh RESULTS_DIR [OUTPUT.png]
# On a logarithmic size axis a cost that grows with the logarithm of the size
# is a straight line.
set -euo pipefail

results_dir=${1:?usage: bench/plot.sh RESULTS_DIR [OUTPUT.png]}
output=${2:-$results_dir/text-cost.png}
data=$results_dir/text-cost.dat
[ -f "$data" ] || { echo "plot.sh: no $data; run zalt_lts_bench --results_dir=$results_dir" >&2; exit 1; }
command -v gnuplot >/dev/null || { echo "plot.sh: gnuplot missing; run scripts/setup.sh --bench" >&2; exit 1; }

gnuplot <<GNUPLOT
set terminal pngcairo size 900,560 font ",11"
set output "$output"
set title "text(reference, language): one lookup in a warm store (hits)"
set xlabel "texts in the store"
set ylabel "ns per lookup"
set logscale x 10
set format x "10^{%L}"
set xrange [700:1.4e6]
set yrange [0:*]
set key top left
set grid xtics ytics mxtics
plot "$data" using 1:3 with linespoints lw 2 pt 7 title "text, no width, no lines", \
     "$data" using 1:4 with linespoints lw 2 pt 5 title "text, width", \
     "$data" using 1:5 with linespoints lw 2 pt 9 title "text, lines", \
     "$data" using 1:6 with linespoints lw 2 pt 11 title "text, width and lines", \
     "$data" using 1:2 with linespoints lw 3 dt 2 pt 6 lc rgb "black" title "floor: one std::map::lower_bound" noenhanced, \
     "$data" using 1:(3*\$2) with lines lw 1 dt 3 lc rgb "gray40" title "3 × floor"
GNUPLOT
echo "wrote $output"
