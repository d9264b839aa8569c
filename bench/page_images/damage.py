# SPDX-License-Identifier: Apache-2.0
"""What scanners, copiers, faxes, pens and stamps do to a page."""
import io
import random

import numpy as np
from PIL import Image, ImageChops, ImageDraw, ImageFilter

from . import faces


def samples(image):
    return np.asarray(image, dtype=np.float32)


def picture(values):
    return Image.fromarray(np.clip(values + .5, 0, 255).astype(np.uint8))


def soften(image, radius):
    return image.filter(ImageFilter.GaussianBlur(radius))


def grain(image, sigma, seed):
    values = samples(image)
    return picture(values + np.random.default_rng(seed).normal(0, sigma, values.shape))


def scanned(image, seed, sigma=3, radius=.5, white=246, black=28):
    """A flatbed scanner: a little blur, less contrast, grain."""
    values = samples(soften(image, radius))
    return grain(picture(black + values * (white - black) / 255), sigma, seed)


def bitonal(image, threshold=140):
    return image.convert('L').point(lambda v: 255 if v >= threshold else 0).convert('1')


def scaled(image, factor):
    size = (round(image.width * factor), round(image.height * factor))
    return image.resize(size, Image.Resampling.LANCZOS)


def cloud(size, seed, cells):
    """Values from 0 to 1 that change slowly over the page."""
    rough = np.random.default_rng(seed).random((cells, cells)) * 255
    smooth = picture(rough).resize(size, Image.Resampling.BICUBIC)
    return samples(smooth) / 255


def shaded(image, shade):
    """Multiplies grey or colour pixels by a shade for each."""
    values = samples(image)
    return picture(values * (shade if values.ndim == 2 else shade[:, :, None]))


def unevenly_lit(image, seed, darkest=.5, corner=(0, 1)):
    height, width = image.height, image.width
    y, x = np.mgrid[0:height, 0:width]
    reach = np.hypot(x / width - corner[0], y / height - corner[1]) / 1.4
    return shaded(image, darkest + (1 - darkest) * np.clip(
        reach * 1.5 + .1 * cloud((width, height), seed, 5), 0, 1))


def pepper(image, seed, share, largest=2):
    """Black specks, some of them of several pixels."""
    spots, chance = ImageDraw.Draw(image), random.Random(seed)
    for _ in range(round(share * image.width * image.height)):
        x, y = chance.randrange(image.width), chance.randrange(image.height)
        size = chance.choice([0] * 6 + list(range(1, largest + 1)))
        spots.ellipse((x, y, x + size, y + size), fill=0)
    return image


def photocopied(image, seed, ground=150, border=30, black=15):
    """A dark copy: grey mottled ground, black where the lid was open."""
    values = black + samples(image) * (ground - black) / 255
    values = values + 16 * (cloud(image.size, seed, 9) - .5)
    values += np.random.default_rng(seed).normal(0, 9, values.shape)
    height, width = values.shape
    whole = height + 2 * border, width + 3 * border
    framed = np.random.default_rng(seed + 1).normal(16, 5, whole)
    framed[border:border + height, 2 * border:2 * border + width] = values
    return soften(picture(framed), .6)


def bled_through(image, other, strength):
    """The other side of thin paper, mirrored and blurred."""
    back = soften(other.resize(image.size).transpose(Image.Transpose.FLIP_LEFT_RIGHT), 1.6)
    back = back.point(lambda v: round(255 - (255 - v) * strength))
    return ImageChops.multiply(image, ImageChops.offset(back, 11, 7))


def faxed(image, dpi, vertical_dpi, seed, dropouts=0, specks=.0006, threshold=150):
    """204 dots across; a lost line repeats the one above it, a damaged one loses a stretch."""
    size = (round(image.width * 204 / dpi), round(image.height * vertical_dpi / dpi))
    values = samples(image.convert('L').resize(size, Image.Resampling.BOX))
    chance, numbers = random.Random(seed), np.random.default_rng(seed)
    values = np.where(numbers.random(values.shape) < specks, 0, values)
    for _ in range(dropouts):
        line = chance.randrange(2, values.shape[0])
        if chance.random() < .5:
            values[line] = values[line - 1]
        else:
            start = chance.randrange(values.shape[1])
            values[line, start:start + chance.randrange(80, 500)] = 255
    return bitonal(picture(values), threshold)


def through_jpeg(image, quality):
    data = io.BytesIO()
    image.save(data, 'JPEG', quality=quality)
    return Image.open(data).convert(image.mode)


def highlighted(image, boxes, colour=(255, 240, 90)):
    """A marker's strokes (pixels) over the text, with ragged ends."""
    mask = Image.new('RGB', image.size, (255, 255, 255))
    pen = ImageDraw.Draw(mask)
    for number, (left, top, right, bottom) in enumerate(boxes):
        lift = (number % 3 - 1) * 3
        pen.polygon([(left - 6, top + lift), (right + 9, top - lift), (right + 3, bottom - lift),
                     (left, bottom + lift)], fill=colour)
    return ImageChops.multiply(image.convert('RGB'), soften(mask, 1.2))


def punched(image, dpi, seed, centres):
    """Holes with a dark ground behind them and a shadow at their edge; centres in millimetres."""
    image, radius = image.copy(), round(2.9 * dpi / 25.4)
    pen = ImageDraw.Draw(image)
    for x, y in centres:
        x, y = round(x * dpi / 25.4), round(y * dpi / 25.4)
        pen.ellipse((x - radius, y - radius, x + radius, y + radius), fill=52)
        pen.arc((x - radius, y - radius, x + radius, y + radius), 150, 330, fill=18, width=5)
    return grain(image, 2, seed)


def stapled(image, dpi, x, y, length=11, slope=.35):
    """A staple's grey wire with its shadow; x, y and length in millimetres."""
    image, scale = image.copy(), dpi / 25.4
    pen = ImageDraw.Draw(image)
    ends = [(x * scale, y * scale), ((x + length) * scale, (y - length * slope) * scale)]
    pen.line([(a + 3, b + 4) for a, b in ends], fill=150, width=max(3, round(.8 * scale)))
    pen.line(ends, fill=95, width=max(2, round(.5 * scale)))
    return image


def worn(mask, seed):
    """A stamp's ink does not reach the paper everywhere."""
    patches = cloud(mask.size, seed, 60)
    return picture(samples(mask) * np.clip(patches * 2.4 - .15, .25, 1))


def stamped(image, at, lines, face, points, colour, seed, angle=10, size=None, ring=False):
    """Presses a rubber stamp on the page (pixels); size: of its frame, (width, height)."""
    width, height = size
    mask = Image.new('L', (width, height), 0)
    pen, font = ImageDraw.Draw(mask), faces.face(face, points)
    frame = pen.ellipse if ring else pen.rectangle
    frame((3, 3, width - 4, height - 4), outline=255, width=max(4, height // 28))
    for number, line in enumerate(lines):
        y = height * (number + 1) / (len(lines) + 1)
        pen.text((width / 2, y), line, font=font, fill=255, anchor='mm')
    mask = worn(mask, seed).rotate(angle, expand=True, resample=Image.Resampling.BICUBIC)
    ink = Image.new('RGB', image.size, (255, 255, 255))
    ink.paste(Image.new('RGB', mask.size, colour), at, mask)
    return ImageChops.multiply(image.convert('RGB'), ink)


def signed(image, at, name, points, colour=(30, 40, 120), seed=1, tilt=6):
    """A name in a hand that nobody is asked to read, with a flourish below."""
    font = faces.face('script', points)
    mask = Image.new('L', (round(font.getlength(name)) + 60, points * 2), 0)
    pen, chance = ImageDraw.Draw(mask), random.Random(seed)
    pen.text((30, points * 1.3), name, font=font, fill=255, anchor='ls')
    stroke = [(20 + step * 12, points * 1.5 + chance.uniform(-5, 5))
              for step in range((mask.width - 40) // 12)]
    pen.line(stroke, fill=255, width=3)
    mask = mask.rotate(tilt, expand=True, resample=Image.Resampling.BICUBIC)
    image = image.convert('RGB')
    image.paste(Image.new('RGB', mask.size, colour), at, mask)
    return image


def watermarked(image, text, face, points, shade, angle):
    """Large pale letters behind the text."""
    mask = Image.new('L', image.size, 255)
    ImageDraw.Draw(mask).text((image.width / 2, image.height / 2), text, anchor='mm',
                              font=faces.face(face, points), fill=shade)
    return ImageChops.multiply(image, mask.rotate(angle, fillcolor=255))


def scene(width, height, seed):
    """A picture of hills under a sky, for pages with photographs."""
    y, x = np.mgrid[0:height, 0:width].astype(np.float32)
    sky = 205 - 70 * y / height
    values = np.stack([sky * .8, sky * .92, sky * 1.08], axis=2)
    chance = random.Random(seed)
    for layer in range(4):
        line = height * (.42 + .15 * layer) + sum(
            height * .06 / n * np.sin(x / width * 6 * n + chance.uniform(0, 6)) for n in (1, 2, 5))
        tone = np.array([70, 95, 80]) * (1.15 - .25 * layer)
        values = np.where((y > line)[:, :, None], tone, values)
    noise = np.random.default_rng(seed).normal(0, 7, (height, width, 1))
    return soften(picture(values + noise), .7)
