# SPDX-License-Identifier: Apache-2.0
"""How a page lies before the scanner or the camera: turned, skewed, bent, in perspective."""
import math
import random

import numpy as np
from PIL import Image

from .damage import cloud, grain, picture, samples, shaded, soften


def quarters(image, turns):
    """Quarter turns to the left."""
    return image.rotate(90 * turns, expand=True)


def skewed(image, degrees, ground=255):
    """Turned by a few degrees on a ground that shows in the corners."""
    if image.mode == 'RGB' and isinstance(ground, int):
        ground = (ground,) * 3
    return image.rotate(degrees, expand=True, resample=Image.Resampling.BICUBIC, fillcolor=ground)


def sampled(image, x, y, ground):
    """The image at fractional places; the ground (grey or an image's samples) outside of it."""
    values = samples(image)
    height, width = values.shape[:2]
    left, top = np.floor(x).astype(int), np.floor(y).astype(int)
    across, down = x - left, y - top
    if values.ndim == 3:
        across, down = across[:, :, None], down[:, :, None]
    inside = (x >= 0) & (y >= 0) & (x <= width - 1) & (y <= height - 1)
    left, top = np.clip(left, 0, width - 2), np.clip(top, 0, height - 2)
    mixed = (values[top, left] * (1 - across) * (1 - down)
             + values[top, left + 1] * across * (1 - down)
             + values[top + 1, left] * (1 - across) * down
             + values[top + 1, left + 1] * across * down)
    return np.where(inside if values.ndim == 2 else inside[:, :, None], mixed, ground)


def table_top(size, seed, tone=(104, 78, 58)):
    """Wood: stripes along the table with some unevenness."""
    width, height = size
    y = np.mgrid[0:height, 0:width][0] / height
    waves = cloud(size, seed, 6)
    stripes = .86 + .09 * np.sin(y * 150 + waves * 14) + .1 * (waves - .5)
    noise = np.random.default_rng(seed).normal(0, 4, (height, width, 1))
    return picture(stripes[:, :, None] * np.array(tone) + noise)


def plane(corners, width, height):
    """Coefficients of the projection that takes these corners to those of the page."""
    rows, targets = [], []
    flat = [(0, 0), (width, 0), (width, height), (0, height)]
    for (u, v), (x, y) in zip(corners, flat):
        rows += [[u, v, 1, 0, 0, 0, -x * u, -x * v], [0, 0, 0, u, v, 1, -y * u, -y * v]]
        targets += [x, y]
    return np.linalg.solve(np.array(rows, float), np.array(targets, float))


def photographed(image, inward, seed, margin=.05, tone=(104, 78, 58)):
    """The page on a table; inward: how far each corner, from the upper left clockwise, moves
    inward, as shares of width and height."""
    page = image.convert('RGB')
    width, height = page.size
    size = round(width * (1 + 2 * margin)), round(height * (1 + 2 * margin))
    ends = [(0, 0), (1, 0), (1, 1), (0, 1)]
    corners = [((margin + ex + (dx if ex == 0 else -dx)) * width,
                (margin + ey + (dy if ey == 0 else -dy)) * height)
               for (ex, ey), (dx, dy) in zip(ends, inward)]
    a, b, c, d, e, f, g, h = plane(corners, width, height)
    v, u = np.mgrid[0:size[1], 0:size[0]].astype(np.float64)
    below = g * u + h * v + 1
    table = samples(table_top(size, seed, tone))
    return picture(sampled(page, (a * u + b * v + c) / below, (d * u + e * v + f) / below, table))


def hand_shadow(image, seed, darkness=.45):
    """The photographer's shadow over a corner, soft at its edge."""
    chance = random.Random(seed)
    y, x = np.mgrid[0:image.height, 0:image.width]
    angle, reach = chance.uniform(.5, 1.1), chance.uniform(.6, .8)
    depth = x / image.width * math.cos(angle) + y / image.height * math.sin(angle) - reach
    bulge = .06 * np.sin(x / image.width * 9 + seed)
    return shaded(image, 1 - darkness / (1 + np.exp(-(depth + bulge) * 16)))


def camera(image, seed, black=18, white=232, sigma=4, warmth=.96):
    """A telephone's picture: flat contrast, warm light, noise."""
    values = black + samples(soften(image.convert('RGB'), .5)) * (white - black) / 255
    return grain(picture(values * np.array([1, .985, warmth])), sigma, seed)


def bent(image, amount, fold=0.0, ground=70):
    """A page of a thick book: its lines rise and sink and are narrower towards the fold at left."""
    width, height = image.size
    extra = round(height * amount * 1.2)
    y, x = np.mgrid[0:height + 2 * extra, 0:width].astype(np.float32)
    share = x / width
    curve = amount * height * (1.3 * np.exp(-share / .22) - .5 * np.sin(share * math.pi))
    across = x + fold * width * (1 - np.exp(-share / .2)) * (1 - share)
    down = y - extra + curve
    shade = 1 - .55 * np.exp(-share / .07)
    return shaded(picture(sampled(image, across, down, ground)), shade)


def spread(left, right, seed, drop=.045, squeeze=.035, ground=45):
    """Two pages of an open book: both sink and narrow towards the dark gutter between them."""
    sides = []
    for number, page in enumerate((left, right)):
        if number == 0:
            page = page.transpose(Image.Transpose.FLIP_LEFT_RIGHT)
        width, height = page.size
        extra = round(height * drop * 1.3)
        y, x = np.mgrid[0:height + 2 * extra, 0:width].astype(np.float32)
        share = x / width
        across = x + squeeze * width * (1 - np.exp(-share / .12))
        down = y - extra + drop * height * np.exp(-share / .2)
        shade = 1 - .72 * np.exp(-share / .045) - .12 * np.exp(-share / .25)
        side = shaded(picture(sampled(page, across, down, ground)), shade)
        sides.append(side if number else side.transpose(Image.Transpose.FLIP_LEFT_RIGHT))
    book = Image.new(left.mode, (sides[0].width + sides[1].width, sides[0].height))
    book.paste(sides[0], (0, 0))
    book.paste(sides[1], (sides[0].width, 0))
    return grain(book, 3, seed)
