"""The resolution chart: what a viewer does to single pixels, seen at a glance.

At 100 % every grating is exactly as written here. A viewer that samples half a pixel off blurs the gratings of one
pixel to an even grey; one that drops pixels at other zooms draws moire into the rings and stars.
"""

import math

import lettering

WIDTH, HEIGHT = 640, 450

# Palette: greys first, colours behind them.
GREYS = 240
COLOURS = [(255, 0, 0), (0, 255, 0), (0, 0, 255), (0, 255, 255), (255, 0, 255), (255, 255, 0), (128, 0, 0),
           (0, 128, 0), (0, 0, 128), (0, 128, 128), (128, 0, 128), (128, 128, 0), (192, 96, 32), (32, 96, 192),
           (96, 192, 32), (96, 32, 192)]
BLACK, WHITE, PAPER = 0, GREYS - 1, GREYS * 7 // 8


def Palette():
    """256 colours as (red, green, blue)."""
    greys = [(2 * i * 255 + GREYS - 1) // (2 * (GREYS - 1)) for i in range(GREYS)]
    return [(grey, grey, grey) for grey in greys] + COLOURS


class Chart:
    """Rows of palette indices, filled step by step."""

    def __init__(self):
        self.rows = [[PAPER] * WIDTH for _ in range(HEIGHT)]

    def Fill(self, x0, y0, width, height, colour):
        """colour is an index or a function of the place inside the area."""
        for y in range(height):
            for x in range(width):
                self.rows[y0 + y][x0 + x] = colour(x, y) if callable(colour) else colour

    def Write(self, text, x, y):
        for column, row in lettering.Pixels(text, x, y):
            self.rows[row][column] = BLACK

    def Border(self):
        """The outermost pixels alternate, so that a lost row or column shows."""
        for x in range(WIDTH):
            self.rows[0][x] = self.rows[HEIGHT - 1][x] = WHITE if x % 2 else BLACK
        for y in range(HEIGHT):
            self.rows[y][0] = self.rows[y][WIDTH - 1] = WHITE if y % 2 else BLACK

    def Gratings(self, x0, y0):
        """Columns of line widths 1 to 4; rows of vertical lines, horizontal lines and checks."""
        side, gap = 48, 8
        self.Write("LINES OF 1 TO 4 PIXELS", x0, y0)
        for i in range(4):
            width = i + 1
            forms = (lambda x, y: x // width % 2, lambda x, y: y // width % 2,
                     lambda x, y: (x // width + y // width) % 2)
            left = x0 + i * (side + gap)
            self.Write(str(width), left + side // 2 - 2, y0 + 12)
            for j, form in enumerate(forms):
                self.Fill(left, y0 + 22 + j * (side + gap), side, side,
                          lambda x, y, form=form: WHITE if form(x, y) else BLACK)

    def ZonePlate(self, x0, y0, radius):
        """cos(pi r^2 / (2 R)): the rings narrow to the width of one pixel at the radius R."""
        wave = [round((GREYS - 1) * (0.5 + 0.5 * math.cos(2 * math.pi * (phase + 0.01) / 256))) for phase in range(256)]

        def Ring(x, y):
            # Twice the distance from the centre, which lies between pixels.
            dx, dy = 2 * x + 1 - 2 * radius, 2 * y + 1 - 2 * radius
            return wave[16 * (dx * dx + dy * dy) // radius % 256]

        self.Write("RINGS DOWN TO ONE PIXEL", x0, y0)
        self.Fill(x0, y0 + 12, 2 * radius, 2 * radius, Ring)

    def Star(self, x0, y0, radius, spokes):
        def Spoke(x, y):
            dx, dy = 2 * x + 1 - 2 * radius, 2 * y + 1 - 2 * radius
            if dx * dx + dy * dy > 4 * radius * radius:
                return PAPER
            # A small turn keeps every pixel's centre off the spokes' edges, where rounding would decide.
            sector = math.floor((math.atan2(dy, dx) / math.pi + 1.00137) * spokes)
            return WHITE if sector % 2 else BLACK

        self.Write(f"STAR OF {spokes} SPOKES", x0, y0)
        self.Fill(x0, y0 + 12, 2 * radius, 2 * radius, Spoke)

    def Steps(self, x0, y0):
        """Greys from black to white, neighbouring greys at both ends, and colours."""
        self.Write("GREYS, NEIGHBOURS, COLOURS", x0, y0)
        for i in range(16):
            self.Fill(x0 + i * 14, y0 + 12, 14, 20, (GREYS - 1) * i // 15)
            self.Fill(x0 + i * 14, y0 + 36, 14, 20, i if i < 8 else GREYS - 16 + i)
            self.Fill(x0 + i * 14, y0 + 60, 14, 20, GREYS + i)

    def Dots(self, x0, y0):
        """Single pixels at growing distances, black on white and white on black."""
        self.Write("SINGLE PIXELS", x0, y0)
        self.Fill(x0, y0 + 12, 224, 20, WHITE)
        self.Fill(x0, y0 + 32, 224, 20, BLACK)
        place, step = 2, 2
        while place < 222:
            self.rows[y0 + 22][x0 + place] = BLACK
            self.rows[y0 + 42][x0 + place] = WHITE
            place, step = place + step, step + 1


def Rows():
    """The chart as rows of palette indices, the top one first."""
    chart = Chart()
    chart.Border()
    chart.Write(f"VARNOLITE RESOLUTION CHART   {WIDTH} X {HEIGHT} PIXELS   VIEW AT 100%", 16, 12)
    chart.Gratings(16, 32)
    chart.Steps(16, 238)
    chart.Dots(16, 330)
    chart.Star(260, 32, 80, 36)
    chart.Star(260, 220, 80, 72)
    chart.ZonePlate(436, 32, 94)
    chart.Write("BLACK AND WHITE", 436, 244)
    chart.Fill(436, 256, 94, 120, lambda x, y: BLACK)
    chart.Fill(530, 256, 94, 120, lambda x, y: WHITE)
    chart.Fill(460, 280, 47, 72, lambda x, y: WHITE if (x + y) % 2 else BLACK)
    chart.Fill(554, 280, 47, 72, lambda x, y: WHITE if x % 2 else BLACK)
    chart.Write("AT 100% THE GRATINGS OF ONE PIXEL ARE BLACK AND WHITE, NOT GREY.", 16, 412)
    chart.Write("THE OUTERMOST PIXELS ALTERNATE: NO ROW OR COLUMN MAY BE LOST.", 16, 426)
    return chart.rows
