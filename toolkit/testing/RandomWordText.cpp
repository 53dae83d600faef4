#include "toolkit/testing/RandomWordText.h"

#include <random>
#include <unordered_set>

namespace TestText {

namespace {

constexpr size_t kLineLength = 80;

// Syllables that never put an "f" before "f", "i" or "l", so that only the chosen words hold joined pairs.
constexpr const char* kSyllables[] = {"ba", "ca", "de", "do", "er", "ga", "he", "in", "ka", "la", "lo", "ma", "me",
                                      "na", "no", "or", "pa", "pe", "ra", "re", "ri", "sa", "se", "st", "ta", "te",
                                      "th", "to", "un", "ve", "wa", "xe", "yo", "zu", "an", "en", "ar", "us", "ol",
                                      "fo", "fa", "qui", "tr", "ch", "sh", "ow", "ck", "ng"};
constexpr const char* kJoinedPairs[] = {"ff", "fi", "fl", "ffi", "ffl"};

std::string makeWord(std::mt19937& rng)
{
    std::string word;
    const size_t syllables = 1 + rng() % 5;
    for (size_t i = 0; i < syllables; ++i)
        word += kSyllables[rng() % std::size(kSyllables)];
    if (word.size() > 11)
        word.resize(11);
    if (rng() % 8 == 0)
        word[0] = static_cast<char>(word[0] - 'a' + 'A');
    return word;
}

} // namespace

Vocabulary makeVocabulary(size_t size, uint32_t seed)
{
    std::mt19937 rng(seed);
    Vocabulary vocabulary;
    std::unordered_set<std::string> seen;
    const size_t joined = size / 2;
    while (vocabulary.joinedPairWords.size() < joined) {
        std::string word = makeWord(rng);
        word.insert(rng() % (word.size() + 1), kJoinedPairs[rng() % std::size(kJoinedPairs)]);
        if (seen.insert(word).second)
            vocabulary.joinedPairWords.push_back(word);
    }
    while (vocabulary.plainWords.size() < size - joined) {
        std::string word = makeWord(rng);
        if (word.size() >= 2 && seen.insert(word).second)
            vocabulary.plainWords.push_back(word);
    }
    return vocabulary;
}

std::vector<std::string> makeLines(const Vocabulary& vocabulary, size_t count, uint32_t seed)
{
    std::mt19937 rng(seed);
    std::vector<std::string> lines;
    lines.reserve(count);
    const auto& plain = vocabulary.plainWords;
    const auto& joined = vocabulary.joinedPairWords;
    for (size_t n = 0; n < count; ++n) {
        std::string line;
        // The joined-pair word stands among the first words, so that cutting the line to length keeps it.
        const size_t joinedAt = n % 5 == 0 ? rng() % 4 : SIZE_MAX;
        for (size_t w = 0; line.size() < kLineLength; ++w) {
            if (!line.empty())
                line += ' ';
            line += w == joinedAt ? joined[rng() % joined.size()] : plain[rng() % plain.size()];
        }
        line.resize(kLineLength);
        lines.push_back(std::move(line));
    }
    return lines;
}

const std::vector<std::string>& benchmarkLines()
{
    static const std::vector<std::string> lines = makeLines(makeVocabulary(18000, 2024), 100000, 11);
    return lines;
}

} // namespace TestText
