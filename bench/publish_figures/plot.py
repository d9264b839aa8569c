# SPDX-License-Identifier: Apache-2.0
"""The plots, drawn by gnuplot in colours that the colour-blind tell apart."""
import subprocess

from . import catalogue, derive

BLUE, RED, GREEN, ORANGE, GREY = '#0072B2', '#D55E00', '#009E73', '#E69F00', '#666666'

STYLE = '''
set terminal pngcairo size 1200,700 font "DejaVu Sans,15" background "#ffffff"
set encoding utf8
set output "{target}"
set title "{title}" font ",19" offset 0,0.3
set xlabel "{x}"
set ylabel "{y}"
set grid ytics lt 1 lw 1 lc rgb "#e0e0e0"
set border 3 lc rgb "#444444"
set tics nomirror
set key top left Left reverse samplen 2.5 spacing 1.25 noautotitle
set lmargin 10
set rmargin 4
'''


def block(name, rows):
    """A named block of data; texts in quotes."""
    lines = [' '.join(f'"{cell}"' if isinstance(cell, str) else f'{cell:.6g}'
                      for cell in row) for row in rows]
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
         f'set xrange [0.5:{len(rows) + 0.5}]', f'set yrange [0:{1.3 * most}]', 'set xtics 1',
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
    library = derive.curve(results.of('document_memory'), 'document_memory')
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
         'set logscale x', 'set xtics (1, 2, 5, 10, 20, 50, 100, 200, 500, 1000, 2000, 5000)',
         'set xrange [0.8:6500]', f'set yrange [0:{1.5 * most}]', 'plot ' + ', '.join(plots))


def accuracy(results, target):
    kinds = derive.accuracy_kinds(results.of('accuracy'))
    if not kinds:
        return
    rows = [(kind.replace(' ', '\\n') + f'\\n({documents})', rate,
             rate if baseline is None else baseline)
            for kind, (documents, rate, baseline) in kinds.items()]
    known = any(baseline is not None for _, _, baseline in kinds.values())
    limit = catalogue.ACCURACY.limit
    plots = [f'$rates using 2:xtic(1) lc rgb "{BLUE}" title "zelk, default engine"']
    if known:
        plots.append(f'"" using 3 lc rgb "{ORANGE}" '
                     'title "baseline: tesseract, data that suits the page"')
        plots.append(f'"" using 0:($3+{limit}):(0.42) with xerrorbars pt 0 lw 2.5 lc rgb "{RED}" '
                     f'title "target: at most {limit:g} points above the baseline"')
    most = max(max(row[1:]) for row in rows) + limit
    plots += [f'"" using ($0{shift:+}):{column}:(sprintf("%.1f", ${column})) with labels '
              'offset 0,0.6 font ",12"'
              for column, shift in (((2, -1 / 6), (3, 1 / 6)) if known else ((2, 0.0),))]
    draw(target, 'Character error rate by kind of document', 'kind (number of documents)',
         'percent', 'set bmargin 6', 'set xlabel offset 0,-1.6', 'set xtics scale 0',
         'set style data histograms', 'set style histogram clustered gap 1',
         'set style fill solid border -1', 'set boxwidth 0.9',
         f'set yrange [0:{1.35 * most}]', block('rates', rows), 'plot ' + ', '.join(plots))


SCRIPTS = {'Latin': ('Latin', RED, 7), 'Chinese': ('Chinese', GREEN, 5),
           'Mixed': ('Latin and Chinese', BLUE, 9), 'no': ('language not told', GREY, 13)}


def pdf_size(results, target):
    kinds = derive.kinds_of(results.of('accuracy'))
    groups = derive.by_kind(
        derive.with_text(results.of('round_trip')),
        lambda row: kinds.get(row['document'], 'no truth').split()[0])
    series = [(*SCRIPTS[kind], 1.6, rows) for kind, rows in groups.items()]
    full = derive.with_text(results.of('full_pages'))
    for language, kind, point in (('en', 'Latin', 6), ('zh', 'Chinese', 4)):
        rows = [row for row in full if row['document'].startswith(language)]
        series.append((f'{kind}, a page full of running text', SCRIPTS[kind][1], point, 2.6, rows))
    series = [one for one in series if one[-1]]
    if not series:
        return
    draw(target, 'What the text adds to a searchable PDF beside its JPEGs',
         'characters in the document', 'bytes a character',
         *(block(f'rows{number}', [(row['characters'], row['bytes']) for row in rows])
           for number, (*_, rows) in enumerate(series)),
         'set logscale xy', 'set xtics add (10, 30, 100, 300, 1000, 3000, 10000, 30000, 100000)',
         'set ytics (1, 2, 3, 5, 10, 20, 30, 50, 100)', 'set yrange [1:100]', 'set key top right',
         'plot ' + ', '.join(
             f'$rows{number} with points pt {point} ps {size} lw 2 lc rgb "{colour}" title "{name}"'
             for number, (name, colour, point, size, _) in enumerate(series)))


PLOTS = {'throughput': throughput, 'memory': memory, 'accuracy': accuracy, 'pdf-size': pdf_size}


def draw_all(results, folder):
    folder.mkdir(parents=True, exist_ok=True)
    for name, plot in PLOTS.items():
        plot(results, folder / f'{name}.png')
