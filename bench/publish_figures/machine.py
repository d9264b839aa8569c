# SPDX-License-Identifier: Apache-2.0
"""The machine and the versions that figures belong to, and who else used the processors."""
import datetime
import os
import platform
import resource
import subprocess

from .documents import ROOT

PACKAGES = ('g++', 'tesseract-ocr', 'libtesseract5', 'liblept5', 'tesseract-ocr-eng',
            'tesseract-ocr-chi-sim', 'libfreeimage3', 'libreoffice-core-nogui', 'libqpdf29',
            'ocrmypdf', 'poppler-utils', 'libbenchmark1debian')


def output(*command):
    try:
        done = subprocess.run(command, capture_output=True, text=True, cwd=ROOT)
    except OSError:
        return ''
    return done.stdout.strip()


def field(path, name):
    with open(path, encoding='utf8') as lines:
        return next((line.split(':', 1)[1].strip() for line in lines if line.startswith(name)), '')


def processor():
    return field('/proc/cpuinfo', 'model name') or platform.machine()


def memory_gib():
    return int(field('/proc/meminfo', 'MemTotal').split()[0]) / 2**20


def system():
    with open('/etc/os-release', encoding='utf8') as lines:
        named = dict(line.strip().split('=', 1) for line in lines if '=' in line)
    return f'{named.get("PRETTY_NAME", "Linux").strip(chr(34))}, kernel {platform.release()}'


def versions():
    """{package: version} of those installed."""
    listed = output('dpkg-query', '-W', '-f', '${Package} ${Version}\n', *PACKAGES)
    return dict(line.split() for line in listed.splitlines() if len(line.split()) == 2)


def told():
    return {
        'date': datetime.datetime.now(datetime.timezone.utc).strftime('%Y-%m-%d %H:%M UTC'),
        'state': output('git', 'describe', '--always', '--dirty'),
        'processor': processor(),
        'cores': os.cpu_count(),
        'memory_gib': round(memory_gib(), 1),
        'system': system(),
        'versions': versions(),
        'load': round(os.getloadavg()[0], 2),
    }


def busy_seconds():
    """Processor seconds that the machine has given to anyone, and that were taken from it."""
    with open('/proc/stat', encoding='utf8') as lines:
        ticks = map(int, lines.readline().split()[1:9])
    user, nice, kernel, _, _, interrupts, soft, stolen = ticks
    return (user + nice + kernel + interrupts + soft + stolen) / os.sysconf('SC_CLK_TCK')


def own_seconds():
    return sum(usage.ru_utime + usage.ru_stime for usage in map(
        resource.getrusage, (resource.RUSAGE_SELF, resource.RUSAGE_CHILDREN)))


class Load:
    """What others take of the processors while something is measured."""

    def __init__(self):
        self.wall, self.busy, self.own = os.times().elapsed, busy_seconds(), own_seconds()

    def share_of_others(self):
        """Of all processor time that the machine has."""
        available = (os.times().elapsed - self.wall) * os.cpu_count()
        others = (busy_seconds() - self.busy) - (own_seconds() - self.own)
        return max(0.0, others / available) if available > 0 else 0.0
