// SPDX-License-Identifier: MIT
// The hash behind every table whose keys come from outside: SipHash with one round a word and three at the
// end (Aumasson and Bernstein, 2012), keyed by a secret of the process. Nobody can choose keys that collide;
// a hash is never to be stored or sent to another process.
#pragma once

#include <bit>
#include <cstdint>
#include <string_view>

namespace vlgs {

/// `KeyedHash hash; hash.add(first); hash.add(second); return hash.finish();`
class KeyedHash {
  public:
    KeyedHash() noexcept : KeyedHash(ofThisProcess()) {}

    void add(std::uint64_t word) noexcept {
        v3_ ^= word;
        round();
        v0_ ^= word;
    }

    std::uint64_t finish() noexcept {
        v2_ ^= 0xFF;
        round();
        round();
        round();
        return v0_ ^ v1_ ^ v2_ ^ v3_;
    }

  private:
    KeyedHash(std::uint64_t key0, std::uint64_t key1) noexcept
        : v0_(key0 ^ 0x736F6D6570736575), v1_(key1 ^ 0x646F72616E646F6D), v2_(key0 ^ 0x6C7967656E657261),
          v3_(key1 ^ 0x7465646279746573) {}
    static const KeyedHash& ofThisProcess() noexcept;

    void round() noexcept {
        v0_ += v1_;
        v2_ += v3_;
        v1_ = std::rotl(v1_, 13) ^ v0_;
        v3_ = std::rotl(v3_, 16) ^ v2_;
        v0_ = std::rotl(v0_, 32);
        v2_ += v1_;
        v0_ += v3_;
        v1_ = std::rotl(v1_, 17) ^ v2_;
        v3_ = std::rotl(v3_, 21) ^ v0_;
        v2_ = std::rotl(v2_, 32);
    }

    std::uint64_t v0_, v1_, v2_, v3_;
};

/// Equal for texts that are exactly equal; for comparison without regard to case see CaseFold.h.
std::uint64_t hashExactly(std::u16string_view text) noexcept;

} // namespace vlgs
