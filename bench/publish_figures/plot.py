# SPDX-License-Identifier: Apache-2.0
"""The plots, drawn by gnuplot in colours that the colour-blind tell apart."""
import subprocess

from . import catalogue, derive
from .records import documents_of

BLUE, RED, GREEN, ORANGE, PINK, SKY, GREY = (
    '#0072B2', '#D55E00', '#009E73', '#E69F00', '#CC79A7', '#56B4E9', '#666666')
COLOURS = (BLUE, RED, GREEN, ORANGE, PINK, SKY, GREY)

STYLE = '''
set terminal pngcairo size 1200,700 font "DejaVu Sans,15" background "#ffffff"
set encoding utf8
set output "{target}"
set title "{title}" font ",19" offset 0,0.3
set xlabel "{x}"
set ylabel "{y}"
set grid ytics lc rgb "#dddddd" lw 1
set border 3 lc rgb "#444444"
set tics nomirror
set key outside below samplen 2.5
set lmargin 11
set rmargin 5
'''


def quoted(text):
    return str(text).replace('\\', '\\\\').replace('"', "'")


def block(name, rows):
    """A named block of data; texts in quotes."""
    lines = [' '.join(f'"{quoted(cell)}"' if isinstance(cell, str) else f'{cell:.6g}' for cell in row)
             for row in rows]
    return '\n'.join([f'${name} << END_OF_DATA', *lines, 'END_OF_DATA'])


def draw(target, title, x, y, *commands):
    script = STYLE.format(target=target, title=title, x=x, y=y) + '\n'.join(commands) + '\n'
    subprocess.run(['gnuplot'], input=script, text=True, check=True, capture_output=True)


def throughput(results, target):
    rows = []
    while samples := results.samples(f'throughput/{len(rows) + 1}'):
        rows.append((len(rows) + 1, samples.median, samples.low, samples.high))
    if not rows:
        return
    cores = results.told['throughput']['cores']
    alone = rows[0][1]
    ideal = [(0.5, 0.5 * alone), (cores, cores * alone), (len(rows) + 0.5, cores * alone)]
    most = max(ideal[-1][1], *(row[3] for row in rows))
    draw(target, 'Pages a minute by worker processes', f'workers (the machine has {cores} cores)',
         'pages a minute', block('measured', rows), block('ideal', ideal),
         f'set xrange [0.5:{len(rows) + 0.5}]', f'set yrange [0:{1.12 * most}]', 'set xtics 1',
         f'plot $ideal with lines dt 2 lw 2 lc rgb "{GREY}" title "one worker, times the cores", '
         f'$measured using 1:2:3:4 with yerrorbars pt 7 ps 1.6 lw 2.5 lc rgb "{BLUE}" '
         'title "measured: median, lowest and highest", '
         f'$measured with lines lw 2.5 lc rgb "{BLUE}" notitle, '
         '$measured using 1:2:(sprintf("%.1f", $2)) with labels offset 3,-0.9 notitle')


def limit_of(points, shortest, ratio):
    """The line that the longest document may reach."""
    points = [point for point in points if point[0] >= shortest]
    return [(pages, ratio * points[0][1]) for pages, _ in points]


def memory(results, target):
    library = derive.curve(results.of('library_memory'), 'library_memory')
    producer = derive.curve(results.of('producer_memory'), 'producer_memory')
    if not library and not producer:
        return
    plots, blocks = [], []
    for name, points, colour, ratio, shortest in (
            ('library with the default engine', library, BLUE, 1.1, 20),
            ('PDF producer alone', producer, RED, 1.5, 1)):
        if not points:
            continue
        blocks.append(block(f'points{len(blocks)}', points))
        plots.append(f'$points{len(blocks) - 1} with linespoints pt 7 ps 1.5 lw 2.5 '
                     f'lc rgb "{colour}" title "{name}"')
        limit = limit_of(points, shortest, ratio)
        if len(limit) > 1:
            blocks.append(block(f'points{len(blocks)}', limit))
            plots.append(f'$points{len(blocks) - 1} with lines dt 2 lw 2 lc rgb "{colour}" '
                         f'title "at most {ratio} times that of {limit[0][0]:,} pages"')
    most = max(peak for _, peak in library + producer)
    draw(target, 'Peak resident memory by length of the document', 'pages', 'MiB', *blocks,
         'set logscale x', 'set xtics (1, 2, 4, 20, 50, 100, 200, 500, 1000, 2000, 5000)',
         f'set xrange [0.8:6500]', f'set yrange [0:{1.25 * most}]', 'plot ' + ', '.join(plots))


def accuracy(results, target):
    kinds = derive.accuracy_kinds(results.of('accuracy'))
    if not kinds:
        return
    rows = [(f'{kind}\\n({documents})', rate, rate if baseline is None else baseline)
            for kind, (documents, rate, baseline) in kinds.items()]
    known = any(baseline is not None for _, _, baseline in kinds.values())
    limit = catalogue.ACCURACY.limit
    plots = [f'$rates using 2:xtic(1) lc rgb "{BLUE}" title "zelk, default engine"']
    if known:
        plots.append(f'"" using 3 lc rgb "{ORANGE}" title "baseline: tesseract, data that suits the page"')
        plots.append(f'"" using 0:($3+{limit}):(0.42) with xerrorbars pt 0 lw 2.5 lc rgb "{RED}" '
                     f'title "target: at most {limit:g} points above the baseline"')
    most = max(max(row[1:]) for row in rows) + limit
    draw(target, 'Character error rate by kind of document', 'kind (documents)', 'percent',
         'set style data histograms', 'set style histogram clustered gap 1',
         'set style fill solid border -1', 'set boxwidth 0.9',
         f'set yrange [0:{1.1 * most}]', spelled('rates', rows), 'plot ' + ', '.join(plots))


def spelled(name, rows):
    """As block, with the line feeds of labels kept."""
    return block(name, rows).replace('\\\\n', '\\n')


def pdf_size(results, target):
    kinds = derive.kinds_of(results.of('accuracy'))
    rows = [row for row in documents_of(results.of('round_trip')) if row.get('bytes')]
    full = [row for row in documents_of(results.of('full_pages')) if row.get('bytes')]
    groups = derive.by_kind(rows, lambda row: kinds.get(row['document'], 'no truth').split()[0])
    blocks, plots = [], []
    names = {'no': 'language not told', 'both': 'Latin and Chinese'}
    for (kind, members), colour, point in zip(groups.items(), (GREEN, RED, BLUE, GREY), (5, 7, 9, 13)):
        blocks.append(block(f'kind{len(blocks)}', [(m['characters'], m['bytes']) for m in members]))
        plots.append(f'$kind{len(blocks) - 1} with points pt {point} ps 1.6 lc rgb "{colour}" '
                     f'title "{names.get(kind, kind)}"')
    if full:
        blocks.append(block('full', [(m['characters'], m['bytes']) for m in full]))
        plots.append(f'$full with points pt 6 ps 2.4 lw 2 lc rgb "black" '
                     'title "pages set full of running text"')
    if plots:
        draw(target, 'What text adds to a PDF beside its JPEGs', 'characters in the document',
             'bytes a character', *blocks, 'set logscale xy', 'set xrange [*:*] extend',
             'set format x "%\'.0f"', 'set ytics (1, 2, 3, 5, 10, 20, 30, 50, 100)',
             'set yrange [1:100]', 'plot ' + ', '.join(plots))


PLOTS = {'throughput': throughput, 'memory': memory, 'accuracy': accuracy, 'pdf-size': pdf_size}


def draw_all(results, folder):
    folder.mkdir(parents=True, exist_ok=True)
    for name, plot in PLOTS.items():
        plot(results, folder / f'{name}.png')
