#include "tools/samplecard/Font.h"

#include <array>

namespace samplecard {

namespace {

constexpr int columnCount = 5;
constexpr int rowCount = 7;
constexpr int advance = columnCount + 1;

struct Glyph {
    char letter;
    std::array<uint8_t, rowCount> rows; // the highest of five bits is the leftmost dot
};

constexpr std::array glyphs{
    Glyph{'0', {14, 17, 19, 21, 25, 17, 14}},
    Glyph{'1', {4, 12, 4, 4, 4, 4, 14}},
    Glyph{'2', {14, 17, 1, 6, 8, 16, 31}},
    Glyph{'3', {14, 17, 1, 6, 1, 17, 14}},
    Glyph{'4', {2, 6, 10, 18, 31, 2, 2}},
    Glyph{'5', {31, 16, 30, 1, 1, 17, 14}},
    Glyph{'6', {6, 8, 16, 30, 17, 17, 14}},
    Glyph{'7', {31, 1, 2, 4, 8, 8, 8}},
    Glyph{'8', {14, 17, 17, 14, 17, 17, 14}},
    Glyph{'9', {14, 17, 17, 15, 1, 2, 12}},
    Glyph{'A', {14, 17, 17, 31, 17, 17, 17}},
    Glyph{'B', {30, 17, 17, 30, 17, 17, 30}},
    Glyph{'C', {14, 17, 16, 16, 16, 17, 14}},
    Glyph{'D', {30, 17, 17, 17, 17, 17, 30}},
    Glyph{'E', {31, 16, 16, 30, 16, 16, 31}},
    Glyph{'F', {31, 16, 16, 30, 16, 16, 16}},
    Glyph{'G', {14, 17, 16, 23, 17, 17, 14}},
    Glyph{'H', {17, 17, 17, 31, 17, 17, 17}},
    Glyph{'I', {14, 4, 4, 4, 4, 4, 14}},
    Glyph{'K', {17, 18, 20, 24, 20, 18, 17}},
    Glyph{'L', {16, 16, 16, 16, 16, 16, 31}},
    Glyph{'M', {17, 27, 21, 21, 17, 17, 17}},
    Glyph{'N', {17, 25, 21, 19, 17, 17, 17}},
    Glyph{'O', {14, 17, 17, 17, 17, 17, 14}},
    Glyph{'P', {30, 17, 17, 30, 16, 16, 16}},
    Glyph{'R', {30, 17, 17, 30, 20, 18, 17}},
    Glyph{'S', {15, 16, 16, 14, 1, 1, 30}},
    Glyph{'T', {31, 4, 4, 4, 4, 4, 4}},
    Glyph{'U', {17, 17, 17, 17, 17, 17, 14}},
    Glyph{'V', {17, 17, 17, 17, 17, 10, 4}},
    Glyph{'W', {17, 17, 17, 21, 21, 27, 17}},
    Glyph{'Y', {17, 17, 10, 4, 4, 4, 4}},
    Glyph{'k', {16, 16, 18, 20, 24, 20, 18}},
    Glyph{'m', {0, 0, 26, 21, 21, 21, 21}},
    Glyph{'h', {16, 16, 30, 17, 17, 17, 17}},
    Glyph{'/', {1, 1, 2, 4, 8, 16, 16}},
    Glyph{':', {0, 4, 4, 0, 4, 4, 0}},
    Glyph{'-', {0, 0, 0, 14, 0, 0, 0}},
    Glyph{'.', {0, 0, 0, 0, 0, 6, 6}},
};

const Glyph* glyphFor(char letter)
{
    for (const Glyph& glyph : glyphs) {
        if (glyph.letter == letter)
            return &glyph;
    }
    return nullptr;
}

// Every dot of the text as a square, grown by some pixels on each side.
void drawDots(
    Canvas& canvas, std::string_view text, int x, int y, int scale, int grow, Rgb colour, float alpha)
{
    for (const char letter : text) {
        if (const Glyph* glyph = glyphFor(letter)) {
            for (int dot = 0; dot < columnCount * rowCount; ++dot) {
                const int column = dot % columnCount;
                const int line = dot / columnCount;
                if (!(glyph->rows[size_t(line)] >> (columnCount - 1 - column) & 1))
                    continue;
                for (int n = -grow; n < scale + grow; ++n)
                    canvas.blendSpan(y + line * scale + n, float(x + column * scale - grow),
                        float(x + (column + 1) * scale + grow), colour, alpha);
            }
        }
        x += advance * scale;
    }
}

} // namespace

void drawText(Canvas& canvas, std::string_view text, int x, int y, int scale, Rgb colour)
{
    drawDots(canvas, text, x, y, scale, std::max(1, scale / 2), {12, 14, 20}, 0.55F);
    drawDots(canvas, text, x, y, scale, 0, colour, 1);
}

int textWidth(std::string_view text, int scale)
{
    return (int(text.size()) * advance - 1) * scale;
}

} // namespace samplecard
