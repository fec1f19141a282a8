#!/usr/bin/env python3
"""Makes the pictures and sounds of the samples anew; with --check it only compares.

Pictures are bitmaps of 8 bits with a palette, sounds are mono waves of 8 bits. Pure black is see-through in
the game. The same bytes come out on every run.
"""
import math
import os
import struct
import sys

SAMPLES = os.path.join(os.path.dirname(os.path.abspath(__file__)), "../../samples")
CLEAR = (0, 0, 0)
INK = (10, 11, 16)  # as dark as something can be that is seen


class Random:
    """The same numbers on every machine."""

    def __init__(self, seed):
        self.state = seed

    def below(self, limit):
        self.state = (self.state * 1664525 + 1013904223) & 0xFFFFFFFF
        return (self.state >> 8) * limit >> 24

    def share(self):
        return self.below(1 << 16) / 65536.0


def mix(first, second, share):
    return tuple(round(a + (b - a) * share) for a, b in zip(first, second))


class Picture:
    def __init__(self, width, height, color=CLEAR):
        self.width, self.height = width, height
        self.pixels = [[color] * width for _ in range(height)]

    def put(self, x, y, color):
        if 0 <= x < self.width and 0 <= y < self.height:
            self.pixels[y][x] = color

    def box(self, x, y, width, height, color):
        for row in range(y, y + height):
            for column in range(x, x + width):
                self.put(column, row, color)

    def frame(self, x, y, width, height, color):
        self.box(x, y, width, 1, color)
        self.box(x, y + height - 1, width, 1, color)
        self.box(x, y, 1, height, color)
        self.box(x + width - 1, y, 1, height, color)

    def polygon(self, corners, color):
        """Fills a polygon; `color` may be a function of x and y."""
        for y in range(self.height):
            for x in range(self.width):
                if inside(corners, x + 0.5, y + 0.5):
                    self.put(x, y, color(x, y) if callable(color) else color)

    def text(self, x, y, words, color, scale=1):
        for letter in words:
            for row, bits in enumerate(LETTERS[letter]):
                for column, bit in enumerate(bits):
                    if bit == "#":
                        self.box(x + column * scale, y + row * scale, scale, scale, color)
            x += 6 * scale

    def bytes(self):
        palette = [CLEAR]
        index = {CLEAR: 0}
        rows = []
        for line in reversed(self.pixels):
            row = bytearray()
            for color in line:
                if color not in index:
                    index[color] = len(palette)
                    palette.append(color)
                row.append(index[color])
            rows.append(bytes(row) + bytes(-len(row) % 4))
        assert len(palette) <= 256, len(palette)
        table = b"".join(bytes((b, g, r, 0)) for r, g, b in palette)
        pixels = b"".join(rows)
        begin = 54 + len(table)
        return (struct.pack("<2sIHHI", b"BM", begin + len(pixels), 0, 0, begin)
                + struct.pack("<IiiHHIIiiII", 40, self.width, self.height, 1, 8, 0, len(pixels), 2835, 2835,
                              len(palette), 0) + table + pixels)


def inside(corners, x, y):
    odd = False
    for (x1, y1), (x2, y2) in zip(corners, corners[1:] + corners[:1]):
        if (y1 > y) != (y2 > y) and x < x1 + (y - y1) * (x2 - x1) / (y2 - y1):
            odd = not odd
    return odd


LETTERS = {name: rows.split("/") for name, rows in {
    " ": "...../...../...../...../...../...../.....",
    "A": ".###./#...#/#...#/#####/#...#/#...#/#...#",
    "C": ".####/#..../#..../#..../#..../#..../.####",
    "D": "####./#...#/#...#/#...#/#...#/#...#/####.",
    "E": "#####/#..../#..../####./#..../#..../#####",
    "F": "#####/#..../#..../####./#..../#..../#....",
    "G": ".####/#..../#..../#.###/#...#/#...#/.####",
    "H": "#...#/#...#/#...#/#####/#...#/#...#/#...#",
    "I": ".###./..#../..#../..#../..#../..#../.###.",
    "L": "#..../#..../#..../#..../#..../#..../#####",
    "N": "#...#/##..#/##..#/#.#.#/#..##/#..##/#...#",
    "O": ".###./#...#/#...#/#...#/#...#/#...#/.###.",
    "P": "####./#...#/#...#/####./#..../#..../#....",
    "R": "####./#...#/#...#/####./#.#../#..#./#...#",
    "S": ".####/#..../#..../.###./....#/....#/####.",
    "T": "#####/..#../..#../..#../..#../..#../..#..",
    "U": "#...#/#...#/#...#/#...#/#...#/#...#/.###.",
    "V": "#...#/#...#/#...#/#...#/#...#/.#.#./..#..",
    "W": "#...#/#...#/#...#/#.#.#/#.#.#/##.##/#...#",
}.items()}


# ---------------------------------------------------------------- what flies

def ship():
    """A cabin on a tank with four legs; the feet are the lowest pixels."""
    picture = Picture(48, 48)
    light, mid, dark = (226, 230, 238), (160, 166, 180), (84, 90, 106)

    def metal(x, _):
        return light if x < 20 else mid if x < 30 else dark

    for side in (-1, 1):
        leg = [(24 + side * x, y) for x, y in ((10, 26), (13, 26), (23, 46), (20, 46))]
        picture.polygon(leg, mid if side < 0 else dark)
        picture.polygon([(24 + side * x, y) for x, y in ((4, 36), (6, 36), (19, 43), (17, 43))], dark)
        picture.box(24 + (side * 20 - 4 if side > 0 else -24), 45, 8, 3, light if side < 0 else mid)
    picture.polygon([(20, 36), (28, 36), (32, 43), (16, 43)], lambda x, _: (150, 96, 60) if x < 25 else (96, 60, 40))
    gold = lambda x, y: ((236, 190, 84), (204, 150, 52), (140, 96, 30))[0 if x < 18 else 1 if x < 31 else 2]
    picture.polygon([(10, 24), (38, 24), (40, 30), (36, 37), (12, 37), (8, 30)], gold)
    picture.box(10, 30, 29, 1, (120, 84, 30))
    picture.polygon([(16, 5), (32, 5), (37, 12), (36, 24), (12, 24), (11, 12)], metal)
    picture.polygon([(18, 9), (30, 9), (32, 14), (28, 18), (20, 18), (16, 14)], (34, 60, 96))
    picture.polygon([(19, 10), (25, 10), (21, 16), (18, 14)], (130, 190, 235))
    picture.box(14, 20, 20, 1, dark)
    picture.box(23, 0, 2, 5, mid)
    picture.box(22, 0, 4, 2, (255, 90, 70))
    return picture


def flame():
    """Points down; the brightest part is at its upper end."""
    picture = Picture(20, 36)
    for y in range(36):
        half = 9.5 * (1 - y / 36.0) ** 0.7 * (0.75 + 0.25 * math.cos(y * 0.9))
        for x in range(20):
            far = abs(x - 9.5) / max(half, 0.01)
            if far > 1:
                continue
            heat = (1 - far) * (1 - y / 36.0)
            picture.put(x, y, (255, 250, 214) if heat > 0.52 else (255, 206, 84) if heat > 0.27
                        else (255, 138, 36) if heat > 0.1 else (214, 70, 24))
    return picture


def spark():
    """White, so that the game can give it any color."""
    picture = Picture(8, 8)
    for y in range(8):
        for x in range(8):
            far = math.hypot(x - 3.5, y - 3.5)
            if far < 3.9:
                level = 255 if far < 2 else 220 if far < 3.2 else 170
                picture.put(x, y, (level, level, level))
    return picture


def rock():
    random = Random(7)
    picture = Picture(40, 40)
    corners = []
    for i in range(14):
        far = 14 + random.below(6)
        corners.append((20 + far * math.cos(i * math.tau / 14), 20 + far * math.sin(i * math.tau / 14)))
    shades = [mix((196, 168, 140), (58, 44, 40), i / 5) for i in range(6)]

    def shade(x, y):
        return shades[min(5, max(0, int((x + y) / 12.5) + (random.below(3) - 1) // 2))]

    picture.polygon(corners, shade)
    for x, y, size in ((15, 14, 4), (25, 23, 5), (14, 27, 3), (27, 11, 2)):
        for row in range(-size, size + 1):
            for column in range(-size, size + 1):
                if math.hypot(column, row) <= size - 0.3 and picture.pixels[y + row][x + column] != CLEAR:
                    picture.put(x + column, y + row, (66, 50, 46) if column + row < 1 else (150, 126, 106))
    return picture


def can():
    """A can of fuel on a small parachute."""
    picture = Picture(32, 44)
    for y in range(14):
        half = 15.5 * math.sqrt(max(0.0, 1 - ((13 - y) / 14.0) ** 2))
        for x in range(32):
            if abs(x - 15.5) <= half:
                picture.put(x, y, ((232, 232, 236), (226, 96, 60))[(x + 1) // 6 % 2])
    for side in (-1, 1):
        for y in range(14, 25):
            picture.put(16 + round(side * (15 - (y - 14) * 0.8)) - (1 if side > 0 else 0), y, (150, 150, 160))
    picture.box(8, 25, 16, 19, (60, 160, 80))
    picture.box(8, 25, 4, 19, (110, 214, 130))
    picture.box(21, 25, 3, 19, (30, 96, 50))
    picture.box(8, 29, 16, 1, (24, 80, 40))
    picture.box(8, 40, 16, 1, (24, 80, 40))
    picture.polygon([(17, 30), (12, 36), (16, 36), (14, 40), (20, 34), (16, 34)], (250, 240, 130))
    return picture


def planet():
    """A blue world far away, lit from the left."""
    random = Random(3)
    size = 128
    picture = Picture(size, size)
    blots = [(random.below(size), random.below(size), 8 + random.below(20)) for _ in range(16)]
    clouds = [(random.below(size), random.below(size), 10 + random.below(26)) for _ in range(14)]
    for y in range(size):
        for x in range(size):
            far = math.hypot(x - 63.5, y - 63.5) / 63.5
            if far > 1:
                continue
            color = (36, 92, 176)
            if any(math.hypot(x - a, (y - b) * 1.5) < r for a, b, r in blots):
                color = (64, 132, 76)
            if any(math.hypot((x - a) * 0.45, (y - b) * 2.6) < r * 0.5 for a, b, r in clouds):
                color = (206, 220, 232)
            if abs(y - 63.5) > 56:
                color = (232, 238, 244)
            light = 1.15 - math.hypot(x - 36, y - 46) / 92.0
            step = min(7, max(0, int(light * 8 + (random.share() - 0.5) * 0.6)))
            picture.put(x, y, mix((6, 10, 22), color, (0.1, 0.22, 0.36, 0.52, 0.68, 0.82, 0.92, 1.0)[step]))
    return picture


def beacon():
    """A lamp on a short pole, white for any color."""
    picture = Picture(10, 22)
    picture.box(4, 8, 2, 14, (110, 110, 120))
    for y in range(10):
        for x in range(10):
            if math.hypot(x - 4.5, y - 4.5) < 4.9:
                picture.put(x, y, (255, 255, 255) if math.hypot(x - 3.5, y - 3.5) < 2.4 else (205, 205, 205))
    return picture


# --------------------------------------------------------------- instruments

PLATE, EDGE_LIGHT, EDGE_DARK = (40, 44, 54), (84, 90, 106), (20, 22, 28)
WELL = (14, 15, 20)


def well(picture, x, y, width, height):
    """A place sunk into the plate."""
    picture.box(x - 2, y - 2, width + 4, height + 4, EDGE_DARK)
    picture.box(x - 2, y + height + 1, width + 4, 1, EDGE_LIGHT)
    picture.box(x + width + 1, y - 2, 1, height + 4, EDGE_LIGHT)
    picture.box(x, y, width, height, WELL)


def console():
    """The plate that the instruments lie on; the places are those of the panels in hud.vsl."""
    random = Random(11)
    picture = Picture(800, 60, PLATE)
    for y in range(60):
        for x in range(800):
            picture.put(x, y, mix(PLATE, (52, 57, 70), (59 - y) // 8 / 7) if random.below(9) else (44, 48, 59))
    picture.box(0, 0, 800, 1, EDGE_LIGHT)
    picture.box(0, 58, 800, 2, EDGE_DARK)
    for x in (242, 528, 688):
        picture.box(x, 6, 1, 48, EDGE_DARK)
        picture.box(x + 1, 6, 1, 48, EDGE_LIGHT)
    label = (178, 190, 210)
    for x, y, words in ((10, 9, "FUEL"), (10, 35, "THRUST"), (256, 9, "FALL"), (256, 35, "DRIFT"),
                        (388, 9, "TILT"), (388, 35, "HEIGHT"), (540, 9, "SCORE"), (540, 35, "LEVEL"),
                        (700, 35, "WIND")):
        picture.text(x, y, words, label, 2)
    for x, y, width, height in ((90, 10, 140, 12), (90, 36, 140, 12), (320, 6, 36, 20), (320, 32, 36, 20),
                                (464, 6, 36, 20), (464, 32, 36, 20), (604, 6, 72, 20), (604, 32, 24, 20),
                                (698, 6, 92, 20), (752, 36, 38, 12)):
        well(picture, x, y, width, height)
    for x, y in ((362, 10), (362, 36), (506, 10)):
        well(picture, x, y, 12, 12)
    return picture


SEGMENTS = ("abcdef", "bc", "abdeg", "abcdg", "bcfg", "acdfg", "acdefg", "abc", "abcdefg", "abcdfg", "")


def digits():
    """0 to 9 and a blank place, each 12 by 20, of seven segments."""
    picture = Picture(12 * len(SEGMENTS), 20, WELL)
    places = {"a": (3, 2, 6, 2), "b": (9, 3, 2, 7), "c": (9, 11, 2, 7), "d": (3, 16, 6, 2), "e": (1, 11, 2, 7),
              "f": (1, 3, 2, 7), "g": (3, 9, 6, 2)}
    for digit, lit in enumerate(SEGMENTS):
        for name, (x, y, width, height) in places.items():
            picture.box(12 * digit + x, y, width, height, (255, 176, 48) if name in lit else (36, 26, 18))
    return picture


def display(places):
    """A display before anything is shown on it."""
    blank = digits()
    picture = Picture(12 * places, 20, WELL)
    for y in range(20):
        for x in range(12 * places):
            picture.put(x, y, blank.pixels[y][120 + x % 12])
    return picture


def bar(light, dark):
    picture = Picture(140, 12)
    for y in range(12):
        color = mix(light, dark, abs(y - 4) / 8)
        for x in range(140):
            picture.put(x, y, mix(color, INK, 0.35) if x % 14 == 13 else color)
    return picture


def lamp(color):
    picture = Picture(12, 12)
    for y in range(12):
        for x in range(12):
            far = math.hypot(x - 5.5, y - 5.5)
            if far < 5.8:
                shine = math.hypot(x - 4, y - 4)
                picture.put(x, y, mix((255, 255, 255), color, min(1.0, shine // 1.5 / 2)) if far < 5
                            else mix(color, INK, 0.5))
    return picture


def icon():
    """The ship, small enough for the row of those that are left."""
    large = ship()
    picture = Picture(18, 18)
    for y in range(18):
        for x in range(18):
            picture.put(x, y, large.pixels[min(47, int((y + 0.5) * 48 / 18))][min(47, int((x + 0.5) * 48 / 18))])
    return picture


def logo():
    """The name in large letters of metal, with a flame below the last one."""
    scale = 14
    picture = Picture(6 * scale * 6 - scale + 8, 7 * scale + 8)
    picture.text(8, 8, "LANDER", (30, 34, 60), scale)
    picture.text(4, 4, "LANDER", (20, 24, 44), scale)
    face = Picture(picture.width, picture.height)
    face.text(0, 0, "LANDER", (1, 1, 1), scale)
    steps = [mix((250, 252, 255), (120, 170, 230), i / 8) for i in range(9)]
    lower = [mix((255, 206, 90), (206, 70, 36), i / 8) for i in range(9)]
    for y in range(picture.height):
        for x in range(picture.width):
            if face.pixels[y][x] == CLEAR:
                continue
            row = y / (7 * scale)
            color = steps[min(8, int(row * 2 * 9))] if row < 0.5 else lower[min(8, int((row - 0.5) * 2 * 9))]
            top = y == 0 or face.pixels[y - 1][x] == CLEAR
            picture.put(x, y, (255, 255, 255) if top else color)
    return picture


# ------------------------------------------------------- the sample of a panel

def button(face):
    picture = Picture(160, 36, face)
    for y in range(36):
        picture.box(0, y, 160, 1, mix(face, (20, 24, 34), y / 60))
    picture.frame(0, 0, 160, 36, mix(face, (255, 255, 255), 0.5))
    picture.box(0, 35, 160, 1, (16, 18, 26))
    picture.box(159, 0, 1, 36, (16, 18, 26))
    return picture


def rail():
    picture = Picture(240, 12, (30, 34, 46))
    picture.frame(0, 0, 240, 12, (100, 110, 130))
    for x in range(24, 240, 24):
        picture.box(x, 3, 1, 6, (70, 78, 96))
    return picture


def knob():
    picture = Picture(20, 20)
    for y in range(20):
        for x in range(20):
            far = math.hypot(x - 9.5, y - 9.5)
            if far < 9.9:
                picture.put(x, y, (60, 66, 82) if far > 8.4 else mix((250, 250, 255), (130, 140, 164), y // 3 / 6))
    return picture


# -------------------------------------------------------------------- sounds

RATE = 11025


def wave(samples, rate=RATE):
    data = bytes(min(255, max(0, 128 + round(value * 120))) for value in samples)
    return (struct.pack("<4sI4s", b"RIFF", 36 + len(data) + len(data) % 2, b"WAVE")
            + struct.pack("<4sIHHIIHH", b"fmt ", 16, 1, 1, rate, rate, 1, 8)
            + struct.pack("<4sI", b"data", len(data)) + data + bytes(len(data) % 2))


def low_noise(count, seed, softness):
    """Noise without its high tones; its end fits its begin."""
    random = Random(seed)
    raw = [random.share() * 2 - 1 for _ in range(count)]
    level, soft = 0.0, []
    for value in raw + raw:
        level += (value - level) / softness
        soft.append(level)
    soft = soft[count:]
    most = max(abs(value) for value in soft)
    return [value / most for value in soft]


def tone(pitch, seconds, rate=RATE, fade=5.0):
    """A soft tone that dies away."""
    count = int(seconds * rate)
    result = []
    for i in range(count):
        time = i / rate
        value = math.sin(math.tau * pitch * time) + 0.35 * math.sin(math.tau * 2 * pitch * time)
        value += 0.15 * math.sin(math.tau * 3 * pitch * time)
        begin, end = min(1.0, time * 200), min(1.0, (seconds - time) * 60)
        result.append(value / 1.5 * math.exp(-fade * time) * begin * end)
    return result


def add(target, at, samples, loudness):
    for i, value in enumerate(samples):
        if at + i < len(target):
            target[at + i] += value * loudness


def thrust():
    noise = low_noise(RATE * 6 // 10, 5, 9.0)
    return wave([0.9 * value * (0.85 + 0.15 * math.sin(math.tau * 20 * i / RATE)) for i, value in enumerate(noise)])


def crash():
    noise, deep = low_noise(RATE * 14 // 10, 9, 2.5), low_noise(RATE * 14 // 10, 10, 30.0)
    return wave([(a * 0.5 + b * 0.8) * math.exp(-2.6 * i / RATE) * min(1.0, i / 40)
                 for i, (a, b) in enumerate(zip(noise, deep))])


def landing():
    samples = [0.0] * int(RATE * 1.1)
    for i, pitch in enumerate((392.0, 493.88, 587.33, 783.99)):
        add(samples, int(i * 0.13 * RATE), tone(pitch, 0.7, fade=4.0), 0.5)
    return wave(samples)


def click():
    return wave([0.5 * value for value in tone(1200.0, 0.05, fade=60.0)])


def tick():
    return wave([0.6 * value for value in tone(880.0, 0.09, fade=25.0)])


def alarm():
    samples = [0.0] * int(RATE * 0.3)
    add(samples, 0, tone(740.0, 0.13, fade=2.0), 0.6)
    add(samples, int(RATE * 0.15), tone(587.33, 0.13, fade=2.0), 0.6)
    return wave(samples)


def pick():
    samples = [0.0] * int(RATE * 0.4)
    for i, pitch in enumerate((523.25, 659.26, 1046.5)):
        add(samples, int(i * 0.07 * RATE), tone(pitch, 0.25, fade=8.0), 0.5)
    return wave(samples)


def music():
    """Four slow bars that begin again without a gap."""
    rate, beat = 8000, 0.48
    count = int(rate * beat * 16)
    samples = [0.0] * (count * 2)
    bars = ((110.0, (220.0, 261.63, 329.63, 440.0)), (87.31, (220.0, 261.63, 349.23, 440.0)),
            (98.0, (246.94, 293.66, 392.0, 493.88)), (82.41, (246.94, 329.63, 415.3, 493.88)))
    for turn in (0, 1):
        for number, (bass, chord) in enumerate(bars):
            begin = turn * count + int(number * 4 * beat * rate)
            add(samples, begin, tone(bass, 4 * beat, rate, 0.9), 0.34)
            for step in range(8):
                place = begin + int(step * beat / 2 * rate)
                add(samples, place, tone(chord[(0, 2, 1, 3, 2, 1, 3, 2)[step]], 0.9, rate, 3.2), 0.22)
    return wave(samples[count:], rate)


FOLDERS = {
    "lander/media": {
        "ship.bmp": ship, "flame.bmp": flame, "spark.bmp": spark, "rock.bmp": rock, "can.bmp": can,
        "planet.bmp": planet, "beacon.bmp": beacon, "console.bmp": console, "digits.bmp": digits,
        "display2.bmp": lambda: display(2), "display3.bmp": lambda: display(3), "display6.bmp": lambda: display(6),
        "bar_green.bmp": lambda: bar((130, 236, 140), (26, 110, 50)),
        "bar_red.bmp": lambda: bar((255, 130, 110), (140, 24, 24)),
        "bar_orange.bmp": lambda: bar((255, 206, 110), (170, 80, 16)),
        "lamp_good.bmp": lambda: lamp((50, 210, 90)), "lamp_bad.bmp": lambda: lamp((226, 50, 40)),
        "icon.bmp": icon, "logo.bmp": logo, "shade.bmp": lambda: Picture(16, 16, INK),
        "thrust.wav": thrust, "crash.wav": crash, "landing.wav": landing, "click.wav": click, "tick.wav": tick,
        "alarm.wav": alarm, "pick.wav": pick, "music.wav": music,
    },
    "panel": {
        "button.bmp": lambda: button((70, 80, 104)), "button_hot.bmp": lambda: button((150, 130, 70)),
        "rail.bmp": rail, "knob.bmp": knob,
    },
}


def main():
    check = sys.argv[1:] == ["--check"]
    wrong = []
    for folder, files in FOLDERS.items():
        folder = os.path.join(SAMPLES, folder)
        os.makedirs(folder, exist_ok=True)
        for name, make in files.items():
            made = make()
            data = made.bytes() if isinstance(made, Picture) else made
            path = os.path.join(folder, name)
            if not check:
                with open(path, "wb") as file:
                    file.write(data)
            elif not os.path.exists(path) or open(path, "rb").read() != data:
                wrong.append(f"{name} is not what this script makes")
        for name in sorted(set(os.listdir(folder)) - set(files)):
            if not name.endswith(".vsl"):
                wrong.append(f"{name} is made by nothing")
    print("\n".join(wrong), end="\n" if wrong else "")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
