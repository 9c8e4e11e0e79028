#!/usr/bin/env bash
# Draws the cost of one `text` lookup against the store size, beside one bare
# map descent over the same keys (left), and each lookup strategy's ratio to
# the descent it was paired with (right), from the data file that
# zalt_lts_bench writes with --results_dir.
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
set terminal pngcairo size 1200,520 font ",11"
set output "$output"
set multiplot layout 1,2 title "text(reference, language) in a warm store, hits"
set logscale x 10
set format x "10^{%L}"
set xrange [700:1.4e6]
set xlabel "texts in the store"
set key top left Left reverse samplen 2
set grid xtics ytics mxtics

set title "cost of one lookup"
set ylabel "ns per lookup"
set yrange [0:*]
plot "$data" using 1:3 with linespoints lw 2 pt 7 title "no width, no lines", \
     "$data" using 1:4 with linespoints lw 2 pt 5 title "width", \
     "$data" using 1:5 with linespoints lw 2 pt 9 title "lines", \
     "$data" using 1:6 with linespoints lw 2 pt 11 title "width and lines", \
     "$data" using 1:2 with linespoints lw 3 dt 2 pt 6 lc rgb "black" title "floor: one std::map::lower_bound" noenhanced

set title "ratio to the descent measured beside it"
set ylabel "text ÷ floor"
set yrange [0:3.5]
plot "$data" using 1:9 with linespoints lw 2 pt 7 title "no width, no lines", \
     "$data" using 1:10 with linespoints lw 2 pt 5 title "width", \
     "$data" using 1:11 with linespoints lw 2 pt 9 title "lines", \
     "$data" using 1:12 with linespoints lw 2 pt 11 title "width and lines", \
     3 with lines lw 2 dt 2 lc rgb "red" title "3 × floor"
unset multiplot
GNUPLOT
echo "wrote $output"
