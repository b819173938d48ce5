/// \file
/// Text to fill documents with, the same on every machine.
#ifndef QVOX_BENCH_RANDOM_TEXT_H
#define QVOX_BENCH_RANDOM_TEXT_H

#include <random>
#include <string>

namespace bench {

/// The standard fixes the numbers of its generators but not of its distributions.
class Random {
public:
    unsigned below(unsigned bound) { return static_cast<unsigned>(engine() % bound); }
    unsigned between(unsigned low, unsigned high) { return low + below(high - low + 1); }

private:
    std::mt19937 engine{20000};
};

/// With zeros in front, up to that many digits.
std::u16string decimal(unsigned number, std::size_t digits);

/// That many English words in small letters.
std::u16string phrase(Random& random, unsigned count);

void appendSentence(std::u16string& text, Random& random);
void appendJapaneseSentence(std::u16string& text, Random& random);

}  // namespace bench

#endif
