// Which container holds the members of an object: in key order, at addresses that stay while others come and go.
//
// Each candidate is built member by member, from sorted and from shuffled keys, then looked up and walked. The keys are
// either words of 5 to 25 characters or numbered names that share their first nine characters, the worst case for a
// container that compares the first eight bytes of a key before the rest.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

struct Entry {
  explicit Entry(std::string_view iKey) : key(iKey) {}
  std::string key;
  double value[4] = {};
};

// The first eight bytes, such that the order of the numbers is the order of the bytes.
std::uint64_t PrefixOf(std::string_view iKey) {
  char bytes[8] = {};
  std::memcpy(bytes, iKey.data(), std::min<std::size_t>(iKey.size(), sizeof bytes));
  return __builtin_bswap64(std::bit_cast<std::uint64_t>(bytes));
}

class MapObject {
 public:
  Entry& Insert(std::string_view iKey) {
    const auto next = _entries.lower_bound(iKey);
    if (next != _entries.end() && next->first == iKey) {
      return next->second;
    }
    return _entries.emplace_hint(next, std::string(iKey), Entry(std::string_view()))->second;
  }
  Entry* Find(std::string_view iKey) {
    const auto found = _entries.find(iKey);
    return found == _entries.end() ? nullptr : &found->second;
  }
  template <class Visit>
  void Walk(Visit&& iVisit) {
    for (auto& [key, entry] : _entries) {
      iVisit(entry);
    }
  }

 private:
  std::map<std::string, Entry, std::less<>> _entries;
};

class SortedOwners {
 public:
  Entry& Insert(std::string_view iKey) {
    auto place = _entries.end();
    if (!_entries.empty() && !(_entries.back()->key < iKey)) {
      place = Lower(iKey);
      if ((*place)->key == iKey) {
        return **place;
      }
    }
    return **_entries.insert(place, std::make_unique<Entry>(iKey));
  }
  Entry* Find(std::string_view iKey) {
    const auto place = Lower(iKey);
    return place == _entries.end() || (*place)->key != iKey ? nullptr : place->get();
  }
  template <class Visit>
  void Walk(Visit&& iVisit) {
    for (auto& entry : _entries) {
      iVisit(*entry);
    }
  }

 private:
  std::vector<std::unique_ptr<Entry>>::iterator Lower(std::string_view iKey) {
    return std::lower_bound(_entries.begin(), _entries.end(), iKey,
                            [](const auto& iEntry, std::string_view iWanted) { return iEntry->key < iWanted; });
  }
  std::vector<std::unique_ptr<Entry>> _entries;
};

struct Slot {
  std::uint64_t prefix = 0;
  Entry* entry = nullptr;
};

bool IsBefore(const Slot& iSlot, std::uint64_t iPrefix, std::string_view iKey) {
  return iSlot.prefix != iPrefix ? iSlot.prefix < iPrefix : iSlot.entry->key < iKey;
}

bool IsSame(const Slot& iSlot, std::uint64_t iPrefix, std::string_view iKey) {
  return iSlot.prefix == iPrefix && iSlot.entry->key == iKey;
}

// One row of slots.
class SortedSlots {
 public:
  SortedSlots() = default;
  SortedSlots(const SortedSlots&) = delete;
  SortedSlots& operator=(const SortedSlots&) = delete;
  ~SortedSlots() {
    for (const Slot& slot : _slots) {
      delete slot.entry;
    }
  }
  Entry& Insert(std::string_view iKey) {
    const std::uint64_t prefix = PrefixOf(iKey);
    auto place = _slots.end();
    if (!_slots.empty() && !IsBefore(_slots.back(), prefix, iKey)) {
      place = Lower(prefix, iKey);
      if (IsSame(*place, prefix, iKey)) {
        return *place->entry;
      }
    }
    return *_slots.insert(place, {prefix, new Entry(iKey)})->entry;
  }
  Entry* Find(std::string_view iKey) {
    const std::uint64_t prefix = PrefixOf(iKey);
    const auto place = Lower(prefix, iKey);
    return place == _slots.end() || !IsSame(*place, prefix, iKey) ? nullptr : place->entry;
  }
  template <class Visit>
  void Walk(Visit&& iVisit) {
    for (const Slot& slot : _slots) {
      iVisit(*slot.entry);
    }
  }

 private:
  std::vector<Slot>::iterator Lower(std::uint64_t iPrefix, std::string_view iKey) {
    return std::lower_bound(_slots.begin(), _slots.end(), iKey, [iPrefix](const Slot& iSlot, std::string_view iWanted) {
      return IsBefore(iSlot, iPrefix, iWanted);
    });
  }
  std::vector<Slot> _slots;
};

// Rows of at most kChunk slots, and a row of their first slots above them. A full last chunk is left full by appending.
template <std::size_t kChunk>
class ChunkedSlots {
 public:
  ChunkedSlots() = default;
  ChunkedSlots(const ChunkedSlots&) = delete;
  ChunkedSlots& operator=(const ChunkedSlots&) = delete;
  ~ChunkedSlots() {
    for (const auto& chunk : _chunks) {
      for (const Slot& slot : chunk) {
        delete slot.entry;
      }
    }
  }
  Entry& Insert(std::string_view iKey) {
    const std::uint64_t prefix = PrefixOf(iKey);
    if (_chunks.empty() || IsBefore(_chunks.back().back(), prefix, iKey)) {
      return Append(prefix, iKey);
    }
    std::size_t index = ChunkOf(prefix, iKey);
    auto place = Lower(_chunks[index], prefix, iKey);
    if (place != _chunks[index].end() && IsSame(*place, prefix, iKey)) {
      return *place->entry;
    }
    if (_chunks[index].size() == kChunk) {
      Split(index);
      index = ChunkOf(prefix, iKey);
      place = Lower(_chunks[index], prefix, iKey);
    }
    const bool isFirst = place == _chunks[index].begin();
    Entry* const entry = _chunks[index].insert(place, {prefix, new Entry(iKey)})->entry;
    if (isFirst) {
      _firsts[index] = _chunks[index].front();
    }
    return *entry;
  }
  Entry* Find(std::string_view iKey) {
    if (_chunks.empty()) {
      return nullptr;
    }
    const std::uint64_t prefix = PrefixOf(iKey);
    auto& chunk = _chunks[ChunkOf(prefix, iKey)];
    const auto place = Lower(chunk, prefix, iKey);
    return place == chunk.end() || !IsSame(*place, prefix, iKey) ? nullptr : place->entry;
  }
  template <class Visit>
  void Walk(Visit&& iVisit) {
    for (const auto& chunk : _chunks) {
      for (const Slot& slot : chunk) {
        iVisit(*slot.entry);
      }
    }
  }

 private:
  using Chunk = std::vector<Slot>;

  Entry& Append(std::uint64_t iPrefix, std::string_view iKey) {
    const Slot slot{iPrefix, new Entry(iKey)};
    if (_chunks.empty() || _chunks.back().size() == kChunk) {
      _chunks.emplace_back();
      _firsts.push_back(slot);
    }
    _chunks.back().push_back(slot);
    return *slot.entry;
  }
  void Split(std::size_t iIndex) {
    Chunk& full = _chunks[iIndex];
    Chunk upper;
    upper.reserve(kChunk);
    upper.assign(full.begin() + kChunk / 2, full.end());
    full.resize(kChunk / 2);
    _firsts.insert(_firsts.begin() + static_cast<std::ptrdiff_t>(iIndex) + 1, upper.front());
    _chunks.insert(_chunks.begin() + static_cast<std::ptrdiff_t>(iIndex) + 1, std::move(upper));
  }
  // The last chunk whose first key is not behind the key, or the first chunk.
  std::size_t ChunkOf(std::uint64_t iPrefix, std::string_view iKey) {
    if (_firsts.size() == 1) {
      return 0;
    }
    const auto place = Lower(_firsts, iPrefix, iKey);
    const auto index = static_cast<std::size_t>(place - _firsts.begin());
    const bool isExact = place != _firsts.end() && IsSame(*place, iPrefix, iKey);
    return isExact || index == 0 ? index : index - 1;
  }
  static Chunk::iterator Lower(Chunk& ioSlots, std::uint64_t iPrefix, std::string_view iKey) {
    return std::lower_bound(
        ioSlots.begin(), ioSlots.end(), iKey,
        [iPrefix](const Slot& iSlot, std::string_view iWanted) { return IsBefore(iSlot, iPrefix, iWanted); });
  }
  std::vector<Chunk> _chunks;
  std::vector<Slot> _firsts;
};

enum class KeyStyle { Words, Numbered };

std::vector<std::string> SortedKeys(std::size_t iCount, KeyStyle iStyle) {
  std::mt19937 random(7);
  std::vector<std::string> keys;
  keys.reserve(iCount);
  for (std::size_t i = 0; i < iCount; ++i) {
    std::string key = iStyle == KeyStyle::Numbered ? "property." : "";
    if (iStyle == KeyStyle::Numbered) {
      key += std::to_string(1000000 + i);
    } else {
      const std::size_t length = 5 + random() % 15;
      while (key.size() < length) {
        key += static_cast<char>('a' + random() % 26);
      }
      key += std::to_string(i % 100000);
    }
    keys.push_back(std::move(key));
  }
  std::sort(keys.begin(), keys.end());
  return keys;
}

std::vector<std::string> ShuffledKeys(std::size_t iCount, KeyStyle iStyle) {
  auto keys = SortedKeys(iCount, iStyle);
  std::shuffle(keys.begin(), keys.end(), std::mt19937(11));
  return keys;
}

void CountPerKey(benchmark::State& ioState, std::size_t iKeys) {
  ioState.counters["per_key"] = benchmark::Counter(
      static_cast<double>(iKeys), benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

template <class Object>
void Build(benchmark::State& ioState, const std::vector<std::string>& iKeys) {
  for ([[maybe_unused]] auto round : ioState) {
    auto object = std::make_unique<Object>();
    for (const std::string& key : iKeys) {
      object->Insert(key).value[0] = 1;
    }
    benchmark::DoNotOptimize(object.get());
  }
  CountPerKey(ioState, iKeys.size());
}

template <class Object, KeyStyle kStyle>
void BuildSorted(benchmark::State& ioState) {
  Build<Object>(ioState, SortedKeys(static_cast<std::size_t>(ioState.range(0)), kStyle));
}

template <class Object, KeyStyle kStyle>
void BuildShuffled(benchmark::State& ioState) {
  Build<Object>(ioState, ShuffledKeys(static_cast<std::size_t>(ioState.range(0)), kStyle));
}

template <class Object, KeyStyle kStyle>
void Lookup(benchmark::State& ioState) {
  const auto keys = ShuffledKeys(static_cast<std::size_t>(ioState.range(0)), kStyle);
  Object object;
  for (const std::string& key : keys) {
    object.Insert(key);
  }
  for ([[maybe_unused]] auto round : ioState) {
    for (const std::string& key : keys) {
      benchmark::DoNotOptimize(object.Find(key));
    }
  }
  CountPerKey(ioState, keys.size());
}

template <class Object, KeyStyle kStyle>
void Iterate(benchmark::State& ioState) {
  const auto keys = ShuffledKeys(static_cast<std::size_t>(ioState.range(0)), kStyle);
  Object object;
  for (const std::string& key : keys) {
    object.Insert(key);
  }
  for ([[maybe_unused]] auto round : ioState) {
    double sum = 0;
    object.Walk([&sum](Entry& iEntry) { sum += iEntry.value[0]; });
    benchmark::DoNotOptimize(sum);
  }
  CountPerKey(ioState, keys.size());
}

using Chunked512 = ChunkedSlots<512>;
using Chunked128 = ChunkedSlots<128>;

}  // namespace

#define SMALL_SIZES Arg(4)->Arg(64)->Arg(4096)
#define ALL_SIZES SMALL_SIZES->Arg(1000000)
#define OBJECT_BENCHMARKS(Object, Style, Sizes)                      \
  BENCHMARK_TEMPLATE(BuildSorted, Object, KeyStyle::Style)->Sizes;   \
  BENCHMARK_TEMPLATE(BuildShuffled, Object, KeyStyle::Style)->Sizes; \
  BENCHMARK_TEMPLATE(Lookup, Object, KeyStyle::Style)->Sizes;        \
  BENCHMARK_TEMPLATE(Iterate, Object, KeyStyle::Style)->Sizes

// The single rows are quadratic for shuffled keys: a million of them would take minutes.
OBJECT_BENCHMARKS(MapObject, Words, ALL_SIZES);
OBJECT_BENCHMARKS(SortedOwners, Words, SMALL_SIZES);
OBJECT_BENCHMARKS(SortedSlots, Words, SMALL_SIZES);
OBJECT_BENCHMARKS(Chunked128, Words, ALL_SIZES);
OBJECT_BENCHMARKS(Chunked512, Words, ALL_SIZES);
OBJECT_BENCHMARKS(MapObject, Numbered, ALL_SIZES);
OBJECT_BENCHMARKS(Chunked128, Numbered, ALL_SIZES);
OBJECT_BENCHMARKS(Chunked512, Numbered, ALL_SIZES);

BENCHMARK_MAIN();
