// SPDX-License-Identifier: MIT
// Each round waits for the one before it, so several blocks go through the rounds side by side.
#include "cipher/Skipjack.h"

#include <algorithm>
#include <utility>

namespace vlgs {

namespace {

// The F-table as the algorithm was published (NIST, 1998).
constexpr std::array<std::uint8_t, 256> fTable = {
    0xA3, 0xD7, 0x09, 0x83, 0xF8, 0x48, 0xF6, 0xF4, 0xB3, 0x21, 0x15, 0x78, 0x99, 0xB1, 0xAF, 0xF9,
    0xE7, 0x2D, 0x4D, 0x8A, 0xCE, 0x4C, 0xCA, 0x2E, 0x52, 0x95, 0xD9, 0x1E, 0x4E, 0x38, 0x44, 0x28,
    0x0A, 0xDF, 0x02, 0xA0, 0x17, 0xF1, 0x60, 0x68, 0x12, 0xB7, 0x7A, 0xC3, 0xE9, 0xFA, 0x3D, 0x53,
    0x96, 0x84, 0x6B, 0xBA, 0xF2, 0x63, 0x9A, 0x19, 0x7C, 0xAE, 0xE5, 0xF5, 0xF7, 0x16, 0x6A, 0xA2,
    0x39, 0xB6, 0x7B, 0x0F, 0xC1, 0x93, 0x81, 0x1B, 0xEE, 0xB4, 0x1A, 0xEA, 0xD0, 0x91, 0x2F, 0xB8,
    0x55, 0xB9, 0xDA, 0x85, 0x3F, 0x41, 0xBF, 0xE0, 0x5A, 0x58, 0x80, 0x5F, 0x66, 0x0B, 0xD8, 0x90,
    0x35, 0xD5, 0xC0, 0xA7, 0x33, 0x06, 0x65, 0x69, 0x45, 0x00, 0x94, 0x56, 0x6D, 0x98, 0x9B, 0x76,
    0x97, 0xFC, 0xB2, 0xC2, 0xB0, 0xFE, 0xDB, 0x20, 0xE1, 0xEB, 0xD6, 0xE4, 0xDD, 0x47, 0x4A, 0x1D,
    0x42, 0xED, 0x9E, 0x6E, 0x49, 0x3C, 0xCD, 0x43, 0x27, 0xD2, 0x07, 0xD4, 0xDE, 0xC7, 0x67, 0x18,
    0x89, 0xCB, 0x30, 0x1F, 0x8D, 0xC6, 0x8F, 0xAA, 0xC8, 0x74, 0xDC, 0xC9, 0x5D, 0x5C, 0x31, 0xA4,
    0x70, 0x88, 0x61, 0x2C, 0x9F, 0x0D, 0x2B, 0x87, 0x50, 0x82, 0x54, 0x64, 0x26, 0x7D, 0x03, 0x40,
    0x34, 0x4B, 0x1C, 0x73, 0xD1, 0xC4, 0xFD, 0x3B, 0xCC, 0xFB, 0x7F, 0xAB, 0xE6, 0x3E, 0x5B, 0xA5,
    0xAD, 0x04, 0x23, 0x9C, 0x14, 0x51, 0x22, 0xF0, 0x29, 0x79, 0x71, 0x7E, 0xFF, 0x8C, 0x0E, 0xE2,
    0x0C, 0xEF, 0xBC, 0x72, 0x75, 0x6F, 0x37, 0xA1, 0xEC, 0xD3, 0x8E, 0x62, 0x8B, 0x86, 0x10, 0xE8,
    0x08, 0x77, 0x11, 0xBE, 0x92, 0x4F, 0x24, 0xC5, 0x32, 0x36, 0x9D, 0xCF, 0xF3, 0xA6, 0xBB, 0xAC,
    0x5E, 0x6C, 0xA9, 0x13, 0x57, 0x25, 0xB5, 0xE3, 0xBD, 0xA8, 0x3A, 0x01, 0x05, 0x59, 0x2A, 0x46,
};

using KeyedTables = std::array<std::array<std::uint8_t, 256>, 10>;
using Word = std::uint32_t; // 16 bits of it

constexpr unsigned rounds = 32;

// The permutation G of one round and its inverse: four Feistel steps over the two bytes of a word. Round n
// uses the key bytes 4n to 4n + 3, counted round and round.
template <unsigned round>
Word permute(const KeyedTables& keyed, Word word) noexcept {
    const Word g1 = word >> 8;
    const Word g2 = word & 0xFF;
    const Word g3 = keyed[4 * round % 10][g2] ^ g1;
    const Word g4 = keyed[(4 * round + 1) % 10][g3] ^ g2;
    const Word g5 = keyed[(4 * round + 2) % 10][g4] ^ g3;
    const Word g6 = keyed[(4 * round + 3) % 10][g5] ^ g4;
    return g5 << 8 | g6;
}

template <unsigned round>
Word permuteBack(const KeyedTables& keyed, Word word) noexcept {
    const Word g5 = word >> 8;
    const Word g6 = word & 0xFF;
    const Word g4 = keyed[(4 * round + 3) % 10][g5] ^ g6;
    const Word g3 = keyed[(4 * round + 2) % 10][g4] ^ g5;
    const Word g2 = keyed[(4 * round + 1) % 10][g3] ^ g4;
    const Word g1 = keyed[4 * round % 10][g2] ^ g3;
    return g1 << 8 | g2;
}

// The four words of `lanes` blocks. A round moves every word on by one place; here the words stay and the
// places move: in round n the published word i is words[(i - 1 - n) % 4]. After 32 rounds all are back.
template <std::size_t lanes>
using Words = std::array<std::array<Word, lanes>, 4>;

constexpr unsigned placeOf(unsigned word, unsigned round) {
    return (word - 1 - round) % 4;
}
constexpr bool isRuleA(unsigned round) {
    return round / 8 % 2 == 0;
}

template <unsigned round, std::size_t lanes>
void step(const KeyedTables& keyed, Words<lanes>& words) noexcept {
    auto& first = words[placeOf(1, round)];
    auto& second = words[placeOf(2, round)];
    auto& fourth = words[placeOf(4, round)];
    for (std::size_t lane = 0; lane < lanes; ++lane) {
        if constexpr (isRuleA(round)) {
            first[lane] = permute<round>(keyed, first[lane]);
            fourth[lane] ^= first[lane] ^ (round + 1);
        } else {
            second[lane] ^= first[lane] ^ (round + 1);
            first[lane] = permute<round>(keyed, first[lane]);
        }
    }
}

template <unsigned round, std::size_t lanes>
void stepBack(const KeyedTables& keyed, Words<lanes>& words) noexcept {
    auto& first = words[placeOf(1, round)];
    auto& second = words[placeOf(2, round)];
    auto& fourth = words[placeOf(4, round)];
    for (std::size_t lane = 0; lane < lanes; ++lane) {
        if constexpr (isRuleA(round)) {
            fourth[lane] ^= first[lane] ^ (round + 1);
            first[lane] = permuteBack<round>(keyed, first[lane]);
        } else {
            first[lane] = permuteBack<round>(keyed, first[lane]);
            second[lane] ^= first[lane] ^ (round + 1);
        }
    }
}

template <std::size_t lanes, class Rounds>
void transform(std::span<Skipjack::Block> blocks, const Rounds& allRounds) noexcept {
    Words<lanes> words;
    for (std::size_t lane = 0; lane < lanes; ++lane)
        for (std::size_t word = 0; word < 4; ++word)
            words[word][lane] = Word{blocks[lane][2 * word]} << 8 | blocks[lane][2 * word + 1];
    allRounds(words);
    for (std::size_t lane = 0; lane < lanes; ++lane)
        for (std::size_t word = 0; word < 4; ++word) {
            blocks[lane][2 * word] = static_cast<std::uint8_t>(words[word][lane] >> 8);
            blocks[lane][2 * word + 1] = static_cast<std::uint8_t>(words[word][lane] & 0xFF);
        }
}

template <class Rounds>
void transformAll(std::span<Skipjack::Block> blocks, const Rounds& allRounds) noexcept {
    constexpr std::size_t lanes = 6; // as many as keep the processor busy
    for (; blocks.size() >= lanes; blocks = blocks.subspan(lanes))
        transform<lanes>(blocks, allRounds);
    for (; !blocks.empty(); blocks = blocks.subspan(1))
        transform<1>(blocks, allRounds);
}

} // namespace

Skipjack::Skipjack(const Key& key) noexcept {
    for (std::size_t i = 0; i < key.size(); ++i)
        for (std::size_t x = 0; x < 256; ++x)
            keyed_[i][x] = fTable[x ^ key[i]];
}

void Skipjack::encrypt(std::span<Block> blocks) const noexcept {
    transformAll(blocks, [this]<std::size_t lanes>(Words<lanes>& words) {
        [&]<unsigned... round>(std::integer_sequence<unsigned, round...>) {
            (step<round>(keyed_, words), ...);
        }
        (std::make_integer_sequence<unsigned, rounds>());
    });
}

void Skipjack::decrypt(std::span<Block> blocks) const noexcept {
    transformAll(blocks, [this]<std::size_t lanes>(Words<lanes>& words) {
        [&]<unsigned... round>(std::integer_sequence<unsigned, round...>) {
            (stepBack<rounds - 1 - round>(keyed_, words), ...);
        }
        (std::make_integer_sequence<unsigned, rounds>());
    });
}

} // namespace vlgs
