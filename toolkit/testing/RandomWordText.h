#pragma once
// Lines of random words, for measuring and testing text work on text that does not repeat: a generated
// vocabulary of about 18,000 distinct made-up words, and lines of 80 characters drawn from it. A fifth of the
// lines hold one word with "ff", "fi" or "fl" (pairs that fonts join into one glyph); the other words never
// hold those pairs. The same seed always gives the same text.

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace TestText {

// `size` distinct words of 2 to 14 letters, some capitalised; half of them hold a joined pair, so that the
// joined-pair words alone number in the thousands, as in a real vocabulary of that size and more.
struct Vocabulary {
    std::vector<std::string> plainWords;
    std::vector<std::string> joinedPairWords;
};
Vocabulary makeVocabulary(size_t size, uint32_t seed);

// `count` lines of exactly 80 characters (ASCII); every fifth line, from the first, holds a joined-pair word.
std::vector<std::string> makeLines(const Vocabulary& vocabulary, size_t count, uint32_t seed);

// The lines of the text benchmarks: 100,000 lines from an 18,000-word vocabulary, made once.
const std::vector<std::string>& benchmarkLines();

} // namespace TestText
