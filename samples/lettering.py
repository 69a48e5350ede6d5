"""A bitmap font of capitals, 5 x 7 pixels, with which the samples carry their own labels."""

WIDTH, HEIGHT, ADVANCE = 5, 7, 6

# A row is five bits, the left pixel the highest; seven rows from the top, two hexadecimal digits each.
_GLYPHS = {
    " ": "00000000000000", "0": "0e11131519110e", "1": "040c040404040e", "2": "0e11010204081f", "3": "1f02040201110e",
    "4": "02060a121f0202", "5": "1f101e0101110e", "6": "0608101e11110e", "7": "1f010204080808", "8": "0e11110e11110e",
    "9": "0e11110f01020c", "A": "0e11111f111111", "B": "1e11111e11111e", "C": "0e11101010110e", "D": "1c12111111121c",
    "E": "1f10101e10101f", "F": "1f10101e101010", "G": "0e11101711110f", "H": "1111111f111111", "I": "0e04040404040e",
    "J": "0702020202120c", "K": "11121418141211", "L": "1010101010101f", "M": "111b1515111111", "N": "11111915131111",
    "O": "0e11111111110e", "P": "1e11111e101010", "Q": "0e11111115120d", "R": "1e11111e141211", "S": "0f10100e01011e",
    "T": "1f040404040404", "U": "1111111111110e", "V": "11111111110a04", "W": "11111115151b11", "X": "11110a040a1111",
    "Y": "1111110a040404", "Z": "1f01020408101f", "/": "01010204081010", ".": "0000000000000c", "-": "0000001f000000",
    ":": "000c0c000c0c00", "%": "18190204081303", ",": "000000000c0408",
}


def Pixels(text, x, y):
    """The (x, y) of every pixel that the text covers, its top left corner given."""
    for place, letter in enumerate(text):
        rows = bytes.fromhex(_GLYPHS[letter])
        for row in range(HEIGHT):
            for column in range(WIDTH):
                if rows[row] >> (WIDTH - 1 - column) & 1:
                    yield x + place * ADVANCE + column, y + row
