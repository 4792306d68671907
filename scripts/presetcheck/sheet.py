"""Draws all presets on one sheet."""

import itertools

import numpy
from PIL import Image, ImageDraw, ImageFont

from presetcheck.listening import FRAME, RATE, decibels, third_octaves

COLUMNS = 9
CELL = (140, 80)           # width and height of one preset, its name included
PICTURE = (120, 54)      # whole pixels for frames and thirds of an octave
MARGIN = 10
HEADING = 26
SECONDS = 6.0
FLOOR_DB, TOP_DB = -72.0, -22.0
PAPER, INK, DIM = (250, 250, 248), (30, 30, 34), (110, 110, 118)
LEFT, RIGHT = numpy.array([70, 170, 255.0]), numpy.array([255, 150, 50.0])
FONT = "/usr/share/fonts/truetype/dejavu/DejaVuSans{}.ttf"


def heat(wet):
    """Third octaves over time: bright is loud, blue left, orange right, white both."""
    frames = [wet[i:i + 2 * FRAME] for i in range(0, int(SECONDS * RATE), FRAME)]
    power = numpy.array([third_octaves(frame) for frame in frames if len(frame) == 2 * FRAME])
    level = (decibels(power, FLOOR_DB) - FLOOR_DB) / (TOP_DB - FLOOR_DB)
    level = numpy.clip(level, 0.0, 1.0).transpose(1, 2, 0)[:, ::-1]
    colour = level[0][..., None] * LEFT + level[1][..., None] * RIGHT
    return Image.fromarray(numpy.clip(colour, 0, 255).astype(numpy.uint8))


def shortened(text, font, width):
    while font.getlength(text) > width:
        text = text[:-2].rstrip() + "…"
    return text


def draw_cell(sheet, corner, preset, heard, font):
    picture = heat(heard.wet["voice"]).resize(PICTURE, Image.NEAREST)
    sheet.paste(picture, corner)
    name = shortened(preset.name, font, CELL[0] - 4)
    ImageDraw.Draw(sheet).text((corner[0], corner[1] + PICTURE[1] + 3), name, INK, font)


def rows_of(presets):
    """Folder by folder: its name and its presets in rows."""
    for folder, group in itertools.groupby(presets, key=lambda preset: preset.folder):
        members = list(group)
        yield folder, [members[i:i + COLUMNS] for i in range(0, len(members), COLUMNS)]


def draw_sheet(presets, heard, path):
    small = ImageFont.truetype(FONT.format(""), 11)
    large = ImageFont.truetype(FONT.format("-Bold"), 15)
    folders = list(rows_of(presets))
    height = MARGIN * 2 + sum(HEADING + CELL[1] * len(rows) for _, rows in folders) + 20
    sheet = Image.new("RGB", (MARGIN * 2 + COLUMNS * CELL[0], height), PAPER)
    draw, y = ImageDraw.Draw(sheet), MARGIN
    draw.text((MARGIN, y), f"What each preset adds to a voice: {SECONDS:g} s from left to right, third octaves "
              "from 39 Hz up to 16 kHz; blue is left, orange right, white both", DIM, small)
    y += 20
    for folder, rows in folders:
        draw.text((MARGIN, y + 2), folder, INK, large)
        y += HEADING
        for row in rows:
            for column, preset in enumerate(row):
                corner = (MARGIN + column * CELL[0], y)
                draw_cell(sheet, corner, preset, heard[preset.title], small)
            y += CELL[1]
    sheet.save(path)
