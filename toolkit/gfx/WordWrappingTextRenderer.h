#pragma once
// Word wrapping: how many lines a text takes in a given width, and where the lines break.
//
// Lines break at explicit newlines and, when a line is full, at the last break opportunity that fits: after a
// run of spaces, after a hyphen, and the other places the Unicode line-breaking rules allow. A word too long for
// a line on its own is broken between characters, and a hyphen is shown where such a break splits a word. One
// space at the end of a line does not count against the width, so a line may end in the space before the next
// word. An empty text, and each empty line, still take one line.
//
// The counts agree with the text shaper's own wrapping of the same text, width and font, so a box sized from
// calcNumDisplayLines fits what drawWrappedText (Painter.h) draws. Widths are in pixels; a width of 0 or less
// leaves room for one character per line.
//
// Threads: the user-interface thread only, as for fonts.

#include "toolkit/gfx/Font.h"
#include "toolkit/gfx/FontDesc.h"

#include <cstddef>
#include <string_view>
#include <vector>

class WordWrappingTextRenderer {
public:
    struct Line {
        size_t begin = 0;    // first code unit of the line
        size_t end = 0;      // one past the last; a line's closing newline is not part of it
        bool hyphen = false; // the line ends inside a word, so a hyphen is drawn after it
    };

    static int calcNumDisplayLines(std::wstring_view text, int width, const Pictor::FontDesc& font);
    static int calcNumDisplayLines(std::wstring_view text, const Pictor::FontDesc& font, double width);
    static int calcNumDisplayLines(std::wstring_view text, const Pictor::Font& font, double width);
    static int calcNumDisplayLines(std::string_view utf8, const Pictor::Font& font, double width);

    // The lines in order, as positions in the text given (code units: wchar_t, or bytes of UTF-8).
    static std::vector<Line> calcLineBreaks(std::wstring_view text, const Pictor::Font& font, double width);
    static std::vector<Line> calcLineBreaks(std::string_view utf8, const Pictor::Font& font, double width);
};
