# SPDX-License-Identifier: Apache-2.0
"""What the program tesseract makes of a page, in the figures of scripts/measure-accuracy."""
import os
import pathlib
import runpy
import subprocess

ROOT = pathlib.Path(__file__).resolve().parents[2]
ACCURACY = runpy.run_path(str(ROOT / 'scripts' / 'measure-accuracy'))
LANGUAGES = {'en': 'eng', 'zh': 'chi_sim', 'de': 'deu', 'ja': 'jpn'}


def language(name):
    data = LANGUAGES[name[:2]]
    if 'mixed' in name:
        return 'chi_sim+eng'
    return f'{data}_vert' if 'vertical' in name else data


def figures(path, truth):
    read = subprocess.run(['tesseract', path, '-', '-l', language(path.name)],
                          env={**os.environ, 'OMP_THREAD_LIMIT': '1'}, check=True,
                          stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
    pages = [ACCURACY['normalised'](page) for page in truth.split('\f')]
    compared = ACCURACY['compare'](pages, [read.stdout.decode()])
    return ', '.join(f'{name} {rates[0][0]:.1f}/{rates[0][1]:.1f}'
                     for name, rates in compared.items())
