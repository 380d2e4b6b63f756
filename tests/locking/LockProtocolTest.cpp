// SPDX-License-Identifier: MIT
// The order of steps in which locks are taken, as a model of which every state that can be reached is looked
// at: takers do one step at a time in every order in which their steps can mix, any of them may die between
// two steps, and a file that nobody holds may be swept away at any moment. A look at one file and the making
// of one file are single steps; going through a folder is not.
#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cstdint>
#include <type_traits>
#include <unordered_set>
#include <vector>

namespace vlgs::test {
namespace {

enum Kind : std::int8_t { None, ReadWrite, Exclusive };
enum class Lockable { Project, Document };
enum class Order { MakeThenScan, ScanThenMake, MakeThenHoldThenScan };
/// The locks that a taker takes one after the other, each while it has the one before.
using Script = std::vector<Kind>;

constexpr int mostTakers = 3;
constexpr std::int8_t nobody = -1;
constexpr std::int8_t patience = 1;

/// Of a project, each read-write lock has a file of its own and the exclusive ones share a name; of a
/// document each kind has one name.
constexpr int exclusiveName = mostTakers;
constexpr int names = mostTakers + 1;

enum class At : std::int8_t { Making, Holding, Scanning, Deciding, Granted, Ended };

struct Taker {
    At at = At::Making;
    std::int8_t script = 0;   // which lock of its script it is about
    std::int8_t scanned = 0;  // how many names it has looked at
    std::int8_t patience = 0; // waits that are left
    bool made = false;        // it has the file for the lock it is about
    bool met = false;         // it has seen a file in its way
    Kind has = None;          // the lock that it was granted before
    bool won = false;         // it was granted any lock
};

struct File {
    std::int8_t maker = nobody;
    std::uint8_t holders = 0; // a bit for each
};

struct State {
    std::array<Taker, mostTakers> takers;
    std::array<File, names> files;
};

/// All of a state in whole words.
using Word = std::uint64_t;
using Packed = std::array<Word, sizeof(State) / sizeof(Word)>;
static_assert(sizeof(Packed) == sizeof(State) && std::has_unique_object_representations_v<File>);

struct PackedHash {
    std::size_t operator()(const Packed& packed) const noexcept {
        Word hash = 0;
        for (std::size_t i = 0; i < packed.size(); ++i)
            hash = (hash ^ packed[i]) * 0x9E3779B97F4A7C15u ^ hash >> 29;
        return static_cast<std::size_t>(hash ^ hash >> 32);
    }
};

class Search {
  public:
    Search(Lockable what, Order order, std::vector<Script> scripts, bool mayDie = true)
        : what_(what), order_(order), scripts_(std::move(scripts)), mayDie_(mayDie) {
        State first;
        for (int i = 0; i < mostTakers; ++i) {
            first.takers[i].patience = patience;
            first.takers[i].at = i < count() ? begin() : At::Ended;
        }
        visit(first);
        while (!open_.empty()) {
            const State state = open_.back();
            open_.pop_back();
            follow(state);
        }
    }

    /// Two takers had locks that exclude each other.
    bool conflict = false;
    /// All ended, none died, and nobody was ever granted a lock.
    bool nobodyWon = false;
    /// Each was granted the last lock of its script in some order of steps.
    bool eachCanWin() const { return winners_ == (1u << count()) - 1; }

  private:
    int count() const { return static_cast<int>(scripts_.size()); }
    At begin() const { return order_ == Order::ScanThenMake ? At::Scanning : At::Making; }
    Kind wanted(const State& state, int i) const { return scripts_[i][state.takers[i].script]; }
    int nameOf(int i, Kind kind) const {
        return kind == Exclusive ? exclusiveName : what_ == Lockable::Project ? i : 0;
    }
    Kind kindOf(int name) const { return name == exclusiveName ? Exclusive : ReadWrite; }
    bool excludes(Kind a, Kind b) const {
        return a != None && b != None && (what_ == Lockable::Document || a == Exclusive || b == Exclusive);
    }

    void visit(const State& state) {
        if (seen_.insert(std::bit_cast<Packed>(state)).second)
            open_.push_back(state);
    }

    void follow(const State& state) {
        check(state);
        for (auto name = 0; name < names; ++name) {
            if (state.files[name].maker == nobody || state.files[name].holders)
                continue;
            State next = state;
            next.files[name] = {};
            visit(next);
        }
        for (int i = 0; i < count(); ++i) {
            if (state.takers[i].at == At::Ended)
                continue;
            State next = state;
            step(next, i);
            visit(next);
            if (mayDie_) {
                next = state;
                next.takers[i] = {.at = At::Ended};
                for (auto& file : next.files)
                    file.holders &= static_cast<std::uint8_t>(~(1 << i));
                visit(next);
            }
        }
    }

    void check(const State& state) {
        bool ended = true, won = false;
        for (int i = 0; i < count(); ++i) {
            const auto& taker = state.takers[i];
            ended &= taker.at == At::Ended;
            won |= taker.won;
            if (taker.at == At::Granted && taker.script + 1u == scripts_[i].size())
                winners_ |= 1u << i;
            for (int j = 0; j < i; ++j)
                for (const Kind a : locksOf(state, i))
                    for (const Kind b : locksOf(state, j))
                        conflict |= excludes(a, b);
        }
        nobodyWon |= !mayDie_ && ended && !won;
    }
    std::array<Kind, 2> locksOf(const State& state, int i) const {
        const auto& taker = state.takers[i];
        return {taker.has, taker.at == At::Granted ? wanted(state, i) : None};
    }

    void step(State& state, int i) {
        auto& taker = state.takers[i];
        switch (taker.at) {
        case At::Making:
            return make(state, i);
        case At::Holding: // what it finds under the name need not be what it has made
            taker.made = state.files[nameOf(i, wanted(state, i))].maker != nobody;
            if (taker.made)
                hold(state, i, wanted(state, i));
            taker.at = At::Scanning;
            return;
        case At::Scanning:
            return scan(state, i);
        case At::Deciding:
            return decide(state, i);
        case At::Granted:
            return goOn(state, i);
        case At::Ended:
            return;
        }
    }

    void hold(State& state, int i, Kind kind) {
        state.files[nameOf(i, kind)].holders |= static_cast<std::uint8_t>(1 << i);
    }
    void release(State& state, int i, Kind kind) {
        auto& file = state.files[nameOf(i, kind)];
        if (kind == None || !(file.holders & 1 << i))
            return;
        file.holders &= static_cast<std::uint8_t>(~(1 << i));
        if (!file.holders)
            file = {};
    }

    void make(State& state, int i) {
        auto& taker = state.takers[i];
        auto& file = state.files[nameOf(i, wanted(state, i))];
        const bool free = file.maker == nobody;
        if (free)
            file.maker = static_cast<std::int8_t>(i);
        if (free && order_ != Order::MakeThenHoldThenScan)
            hold(state, i, wanted(state, i));
        taker.made = free && order_ != Order::MakeThenHoldThenScan;
        taker.at = order_ == Order::ScanThenMake ? (free ? At::Granted : At::Deciding)
                   : free && !taker.made         ? At::Holding
                                                 : At::Scanning;
        taker.met |= order_ == Order::ScanThenMake && !free;
        taker.won |= taker.at == At::Granted;
    }

    void scan(State& state, int i) {
        auto& taker = state.takers[i];
        const auto name = taker.scanned++;
        const bool own = (taker.made && name == nameOf(i, wanted(state, i))) ||
                         (taker.has != None && name == nameOf(i, taker.has));
        const auto& file = state.files[name];
        taker.met |= !own && file.holders && excludes(wanted(state, i), kindOf(name));
        if (taker.scanned == names)
            taker.at = order_ == Order::ScanThenMake && !taker.met ? At::Making : At::Deciding;
    }

    void decide(State& state, int i) {
        auto& taker = state.takers[i];
        taker.scanned = 0;
        if (taker.made && !taker.met) {
            taker.at = At::Granted;
            taker.won = true;
            return;
        }
        taker.met = false;
        const bool givesWay = taker.patience == 0 || wanted(state, i) == Exclusive;
        if (taker.made && givesWay)
            release(state, i, wanted(state, i));
        taker.made &= !givesWay;
        if (taker.patience == 0)
            return end(state, i);
        --taker.patience;
        taker.at = taker.made ? At::Scanning : begin();
    }

    /// The next lock of the script; the one before is released when it is granted.
    void goOn(State& state, int i) {
        auto& taker = state.takers[i];
        release(state, i, taker.has);
        taker.has = wanted(state, i);
        if (++taker.script == static_cast<int>(scripts_[i].size())) {
            --taker.script;
            return end(state, i);
        }
        taker.at = begin();
        taker.made = taker.met = false;
        taker.scanned = 0;
        taker.patience = patience;
    }

    void end(State& state, int i) {
        auto& taker = state.takers[i];
        release(state, i, taker.has);
        taker = {.at = At::Ended, .won = taker.won};
    }

    Lockable what_;
    Order order_;
    std::vector<Script> scripts_;
    bool mayDie_;
    unsigned winners_ = 0;
    std::unordered_set<Packed, PackedHash> seen_;
    std::vector<State> open_;
};

const std::vector<Script> scripts = {
    {ReadWrite}, {Exclusive}, {ReadWrite, Exclusive}, {Exclusive, ReadWrite}};

/// All selections of takers, each script as often as one likes.
std::vector<std::vector<Script>> groupsOf(std::size_t size) {
    std::vector<std::vector<Script>> groups = {{}};
    for (std::size_t i = 0; i < size; ++i) {
        std::vector<std::vector<Script>> longer;
        for (const auto& group : groups)
            for (const auto& script : scripts)
                if (group.empty() || group.back() <= script) {
                    longer.push_back(group);
                    longer.back().push_back(script);
                }
        groups = std::move(longer);
    }
    return groups;
}

class LockProtocol : public testing::TestWithParam<Lockable> {};
INSTANTIATE_TEST_SUITE_P(, LockProtocol, testing::Values(Lockable::Project, Lockable::Document),
                         [](const auto& test) {
                             return test.param == Lockable::Project ? "Project" : "Document";
                         });

TEST_P(LockProtocol, NeverGrantsTwoThatExcludeEachOther) {
    for (const std::size_t size : {2, 3})
        for (const auto& group : groupsOf(size)) {
            const Search search(GetParam(), Order::MakeThenScan, group);
            EXPECT_FALSE(search.conflict);
            EXPECT_TRUE(search.eachCanWin());
        }
    const Search search(GetParam(), Order::MakeThenScan, {{Exclusive}, {Exclusive}}, false);
    EXPECT_FALSE(search.nobodyWon) << "of two that live";
}

// Both look before either has a file.
TEST_P(LockProtocol, FailsWhereTheFolderIsLookedAtFirst) {
    EXPECT_TRUE(Search(GetParam(), Order::ScanThenMake, {{ReadWrite}, {Exclusive}}).conflict);
}

// A file that is made before it is held can be swept, and the next one's be held in its place.
TEST(LockProtocolOfProjects, FailsWhereAFileIsMadeBeforeItIsHeld) {
    EXPECT_TRUE(Search(Lockable::Project, Order::MakeThenHoldThenScan, {{Exclusive}, {Exclusive}}).conflict);
}

} // namespace
} // namespace vlgs::test
