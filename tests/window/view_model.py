"""Where the picture lies in the window: the view's arithmetic once more, in few lines, to hold the program to.

Doubles throughout, in the order of operations that the view documents, so that results agree to the last bit.
"""

import math

# The eighth root of 2: eight notches of the wheel double the size.
STEP = 1.0905077326652577
LOWER_LIMIT, UPPER_LIMIT = 16.0, 0.00390625
# Screen pixels of the picture that stay inside the window on each side.
KEPT = 50.0


def Round(value):
    """To the nearest whole number, halves away from zero."""
    return math.trunc(value + 0.5) if value > 0 else math.trunc(value - 0.5)


def Power(base, exponent):
    """By repeated squaring; the reciprocal for a negative exponent."""
    result, factor, rest = 1.0, base, abs(exponent)
    while rest:
        if rest & 1:
            result *= factor
        factor *= factor
        rest >>= 1
    return 1.0 / result if exponent < 0 else result


def Snap(low, high, extent):
    """The whole-numbered edges of an interval: the nearer edge is rounded, the other one follows by the size."""
    a, b = Round(low), Round(high)
    lowError, highError = abs(low - a), abs(high - b)
    if lowError < highError:
        b = a + Round(extent)
    elif highError < lowError:
        a = b - Round(extent)
    elif extent < b - a:
        b = a + Round(extent)
    elif extent > b - a:
        a = b - Round(extent)
    return a, b


class View:
    """An image of imageWidth x imageHeight pixels, each pixelWidth x pixelHeight units, in a window."""

    def __init__(self, imageWidth, imageHeight, pixelWidth=1.0, pixelHeight=1.0):
        self.imageWidth, self.imageHeight = imageWidth * pixelWidth, imageHeight * pixelHeight
        self.width = self.height = 0
        self.inverseZoom, self.scrollX, self.scrollY, self.fits = 1.0, 0.0, 0.0, True

    def Resize(self, width, height):
        self.width, self.height = width, height
        if self.fits:
            inverse = 0.001
            if width * inverse < self.imageWidth:
                inverse = self.imageWidth / width
            if height * inverse < self.imageHeight:
                inverse = self.imageHeight / height
            self._SetZoom(inverse)

    def _SetZoom(self, inverse):
        self.inverseZoom = max(min(inverse, LOWER_LIMIT), UPPER_LIMIT)

    def Wheel(self, notches, x, y):
        """Turns the wheel, a notch at a time, with the mouse at a pixel of the window."""
        offsetX, offsetY = x - self.width * 0.5, y - self.height * 0.5
        for _ in range(abs(notches)):
            self.fits = False
            before, scrollX, scrollY = self.inverseZoom, self.scrollX, self.scrollY
            grid = math.log(before) / math.log(STEP) - (1 if notches > 0 else -1)
            self._SetZoom(Power(STEP, Round(grid)))
            self.scrollX = scrollX + offsetX * (before - self.inverseZoom)
            self.scrollY = scrollY + offsetY * (before - self.inverseZoom)
            self.Clamp()

    def Drag(self, dx, dy):
        """Moves the picture by pixels of the screen and lets go."""
        self.fits = False
        self.scrollX -= dx * self.inverseZoom
        self.scrollY -= dy * self.inverseZoom
        self.Clamp()

    def Clamp(self):
        self.scrollX, self.scrollY = self.Clamped()

    def Clamped(self):
        def Limited(scroll, extent, available):
            limit = extent * 0.5 + (available * self.inverseZoom * 0.5 - self.inverseZoom * KEPT)
            return max(-limit, min(limit, scroll)) if limit >= -limit else scroll

        return (Limited(self.scrollX, self.imageWidth, self.width),
                Limited(self.scrollY, self.imageHeight, self.height))

    def Rectangle(self):
        """x0, y0, x1, y1 of the picture in the window, the second corner exclusive; it may lie outside."""
        scrollX, scrollY = self.Clamped()
        w, h = (max(extent / self.inverseZoom, 1) for extent in (self.imageWidth, self.imageHeight))
        s = 1 / self.inverseZoom
        x0, x1 = Snap((self.width - w) * 0.5 - s * scrollX, (self.width + w) * 0.5 - s * scrollX, w)
        y0, y1 = Snap((self.height - h) * 0.5 - s * scrollY, (self.height + h) * 0.5 - s * scrollY, h)
        return x0, y0, x1, y1

    def Mode(self):
        """The resampling method that the zoom calls for by default."""
        if self.inverseZoom == 1.0:
            return "Nearest"
        return "Cubic" if self.inverseZoom < 1.0 else "Area"
