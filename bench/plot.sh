#!/usr/bin/env bash
# Draws two plots from the data files that zalt_lts_bench writes with
# --results_dir. text-cost.png: the cost of one `text` lookup against the store size, beside one bare
# map descent over the same keys (left), and each lookup strategy's ratio to
# the floor it was paired with (right). load-cost.png: the time to load a
# catalogue against its size, in one call and in calls of a few texts.
#   bench/plot.sh RESULTS_DIR
# On a logarithmic size axis a cost that grows with the logarithm of the size
# is a straight line; on the load plot's log-log axes a cost that grows with
# the size is a line of slope one.
set -euo pipefail

results_dir=${1:?usage: bench/plot.sh RESULTS_DIR}
output=$results_dir/text-cost.png
data=$results_dir/text-cost.dat
load_output=$results_dir/load-cost.png
load_data=$results_dir/load-cost.dat
for file in "$data" "$load_data"; do
  [ -f "$file" ] || { echo "plot.sh: no $file; run zalt_lts_bench --results_dir=$results_dir" >&2; exit 1; }
done
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
     "$data" using 1:2 with linespoints lw 3 dt 2 pt 6 lc rgb "black" title "floor (plain): std::map::lower_bound and the answer's copies" noenhanced

set title "ratio to the floor measured beside it"
set ylabel "text ÷ floor"
set yrange [0:2]
plot "$data" using 1:9 with linespoints lw 2 pt 7 title "no width, no lines", \
     "$data" using 1:10 with linespoints lw 2 pt 5 title "width", \
     "$data" using 1:11 with linespoints lw 2 pt 9 title "lines", \
     "$data" using 1:12 with linespoints lw 2 pt 11 title "width and lines", \
     1.3 with lines lw 2 dt 2 lc rgb "red" title "1.3 × floor"
unset multiplot
GNUPLOT
echo "wrote $output"

gnuplot <<GNUPLOT
set terminal pngcairo size 900,560 font ",11"
set output "$load_output"
set title "loading a catalogue: add in one call and in calls of a few texts"
set logscale xy 10
set format x "10^{%L}"
set format y "10^{%L}"
set xrange [700:1.4e5]
set xlabel "texts in the catalogue"
set ylabel "ms to load"
set key top left Left reverse samplen 2
set grid xtics ytics mxtics mytics
plot "$load_data" using 1:2 with linespoints lw 3 pt 7 lc rgb "black" title "one call", \\
     "$load_data" using 1:3 with linespoints lw 2 pt 5 title "calls of 100", \\
     "$load_data" using 1:4 with linespoints lw 2 pt 9 title "calls of 3", \\
     "$load_data" using 1:5 with linespoints lw 2 pt 11 title "calls of 1", \\
     "$load_data" using 1:6 with linespoints lw 2 pt 4 dt 2 title "calls of 3, languages interleaved", \\
     "$load_data" using 1:7 with linespoints lw 2 pt 6 dt 2 title "calls of 1, languages interleaved"
GNUPLOT
echo "wrote $load_output"
