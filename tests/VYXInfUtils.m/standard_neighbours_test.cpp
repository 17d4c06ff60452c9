#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <compare>
#include <concepts>
#include <cstdint>
#include <functional>
#include <iterator>
#include <limits>
#include <map>
#include <numeric>
#include <ranges>
#include <set>
#include <span>
#include <sstream>
#include <string>
#include <string_view>
#include <type_traits>
#include <unordered_set>
#include <utility>
#include <vector>

#include "KORSysBase/KORError.h"
#include "KORSysBase/KORResult.h"
#include "KORSysBase/KORTime.h"
#include "KORSysBase/KORUuid.h"
#include "KORSysTS/KORString.h"
#include "Quillbase/Binary.h"
#include "Quillbase/Paths.h"
#include "VYXInfError.h"
#include "VYXInfUri.h"
#include "VYXListAccess.h"
#include "VYXPropertyAccess.h"
#include "VYXPropertyTree.h"
#include "VYXPropertyTreeLists.h"

// The value types beside the standard library: containers, algorithms, streams.

namespace {

using ::testing::ElementsAre;

template <class T>
concept Hashable = requires(const T& iValue) {
  { std::hash<T>()(iValue) } -> std::convertible_to<std::size_t>;
};
template <class T>
concept Streamable = requires(std::ostream& ioStream, const T& iValue) {
  { ioStream << iValue } -> std::same_as<std::ostream&>;
};
template <class T>
concept Value = std::semiregular<T> && std::is_nothrow_swappable_v<T> && std::is_nothrow_move_constructible_v<T>;
template <class T>
concept OrderedKey =
    Value<T> && std::totally_ordered<T> && std::three_way_comparable<T, std::strong_ordering> && Hashable<T>;

static_assert(OrderedKey<KORUnicodeString> && Streamable<KORUnicodeString>);
static_assert(OrderedKey<KORUnicodeChar> && Streamable<KORUnicodeChar>);
static_assert(OrderedKey<KORString> && Streamable<KORString>);
static_assert(OrderedKey<QB::StringView> && Streamable<QB::StringView>);
static_assert(OrderedKey<QB::Binary>);
static_assert(OrderedKey<KORTime> && Streamable<KORTime>);
static_assert(OrderedKey<KORUuid> && Streamable<KORUuid>);
static_assert(OrderedKey<VYXInfUri> && Streamable<VYXInfUri>);
static_assert(std::semiregular<VYXInfError> && std::equality_comparable<VYXInfError>);
static_assert(Hashable<VYXInfError> && Streamable<VYXInfError>);
static_assert(Value<VYXPropertyTree> && std::equality_comparable<VYXPropertyTree> && Streamable<VYXPropertyTree>);
static_assert(Value<VYXPropertyAccess> && Streamable<VYXPropertyAccess>);
static_assert(Value<VYXListAccess> && Streamable<VYXListAccess>);

template <class List>
concept Range = Value<List> && std::equality_comparable<List> && std::ranges::random_access_range<List> &&
    std::ranges::random_access_range<const List> && std::ranges::sized_range<const List> &&
    std::ranges::common_range<const List>;

static_assert(Range<KORListValKORUnicodeString> && std::totally_ordered<KORListValKORUnicodeString>);
static_assert(std::ranges::contiguous_range<KORListValKORUnicodeString>);
static_assert(Range<KORRawColldouble> && std::ranges::contiguous_range<const KORRawColldouble>);
static_assert(std::three_way_comparable<KORRawColldouble, std::partial_ordering>);
static_assert(Range<KORRawCollPV> && std::ranges::contiguous_range<const KORRawCollPV>);
static_assert(Range<KORListValvyx_bool> && Range<KORListValvyx_int64_t>);
static_assert(Range<KORListValVYXPropertyTree> && Range<KORListValVYXInfError>);
static_assert(std::is_same_v<std::ranges::range_reference_t<const KORListValvyx_int64_t>, const std::int64_t&>);
static_assert(std::is_convertible_v<KORListValvyx_bool::iterator, KORListValvyx_bool::const_iterator>);
static_assert(!std::is_convertible_v<KORListValvyx_bool::const_iterator, KORListValvyx_bool::iterator>);
static_assert(std::ranges::random_access_range<const QB::Paths> && std::ranges::sized_range<const QB::Paths>);
static_assert(std::ranges::contiguous_range<const QB::Binary> && std::ranges::contiguous_range<QB::BinarySlice>);

template <class T>
std::string Written(const T& iValue) {
  std::ostringstream stream;
  stream << iValue;
  return stream.str();
}

template <class T>
std::size_t HashOf(const T& iValue) {
  return std::hash<T>()(iValue);
}

QB::Binary BytesOf(std::string_view iBytes) {
  char* const data = QB::allocateArrayChar(iBytes.size());
  std::ranges::copy(iBytes, data);
  return {data, iBytes.size(), QB::deallocateArrayChar};
}

TEST(StandardNeighbours, CharactersAreOrderedByCodePoint) {
  const KORUnicodeString text = "a\u00E9\U0001F600\xFF";
  std::set<KORUnicodeChar> set{text[3], text[2], text[1], text[0], text[1]};
  EXPECT_EQ(set.size(), 4u);
  EXPECT_TRUE(*set.begin() == 'a');
  EXPECT_TRUE(set.rbegin()->IsByte());
  EXPECT_TRUE(text[1] > 'z');
  EXPECT_TRUE('z' < text[1]);
  EXPECT_TRUE(text[2] >= U'\U0001F600');
  EXPECT_TRUE(text[0] < 98);  // a number stays one for the narrow character
  EXPECT_TRUE((text[3] <=> '\xFF') == 0);
  EXPECT_EQ(HashOf(text[1]), HashOf(KORUnicodeChar(U'\u00E9')));
  EXPECT_NE(HashOf(text[3]), HashOf(KORUnicodeChar(U'\u00FF')));
}

TEST(StandardNeighbours, TextsCompareAndAddWithStandardTexts) {
  const KORUnicodeString text = "text";
  const std::string same = "text";
  const std::string_view other("tex\0", 4);
  EXPECT_TRUE(text == same);
  EXPECT_TRUE(same == text);
  EXPECT_TRUE(text != other);
  EXPECT_TRUE(text > other);
  EXPECT_TRUE(other < text);
  EXPECT_TRUE((text <=> same) == 0);
  EXPECT_EQ(text + same, "texttext");
  EXPECT_EQ(same + text + std::string_view("!"), "texttext!");
  std::map<KORUnicodeString, int, std::less<>> map{{"text", 1}};
  EXPECT_TRUE(map.contains(same));
  EXPECT_FALSE(map.contains(other));
}

TEST(StandardNeighbours, NarrowStringsAreKeys) {
  // Long ones stand in blocks of their own, whose addresses must not count.
  const std::string tail(100, '-');
  std::vector<KORString> strings;
  for (const char* head : {"d", "a", "c", "b"}) {
    strings.emplace_back(head + tail);
  }
  std::sort(strings.begin(), strings.end(), std::less<>());
  EXPECT_EQ(strings[0].ToStringView()[0], 'a');
  EXPECT_EQ(strings[3].ToStringView()[0], 'd');
  EXPECT_TRUE(strings[0] < "b");
  EXPECT_TRUE(KORString("b") >= "a");
  EXPECT_EQ(Written(KORString("text")), "text");
  EXPECT_EQ(std::unordered_set<KORString>({KORString("a"), KORString("a")}).size(), 1u);
}

TEST(StandardNeighbours, TextViewsAreKeys) {
  const std::string first = "same";
  const std::string second = "same";
  const QB::StringView left{std::string_view(first)};
  const QB::StringView right{std::string_view(second)};
  EXPECT_EQ(HashOf(left), HashOf(right));
  EXPECT_EQ(HashOf(left), HashOf(KORUnicodeString("same")));
  EXPECT_TRUE(left == "same");
  EXPECT_TRUE("other" < left);
  EXPECT_TRUE(left == first);
  EXPECT_TRUE((left <=> right) == 0);
  std::ostringstream stream;
  stream.width(6);
  stream << left;
  EXPECT_EQ(stream.str(), "  same");
}

TEST(StandardNeighbours, BuffersCompareByTheirBytes) {
  const QB::Binary left = BytesOf(std::string_view("a\0\xFF", 3));
  const QB::Binary right = BytesOf(std::string_view("a\0\xFF", 3));
  EXPECT_TRUE(left == right);
  EXPECT_EQ(HashOf(left), HashOf(right));
  EXPECT_TRUE(left > BytesOf("a"));
  EXPECT_TRUE(BytesOf("\x7F") < BytesOf("\x80"));
  EXPECT_TRUE(QB::Binary() == BytesOf(""));
  EXPECT_THAT(left, ElementsAre('a', '\0', '\xFF'));
  const std::span<const char> span(left);
  EXPECT_EQ(span.size(), 3u);
  EXPECT_EQ(span.data(), left.GetData());
  EXPECT_EQ(QB::BinarySlice(left).ToStringView(), left.ToStringView());
  EXPECT_TRUE(std::ranges::equal(QB::BinarySlice(left), left));
  EXPECT_EQ(QB::Binary().ToStringView().size(), 0u);
}

TEST(StandardNeighbours, MomentsMeetTheStandardClock) {
  using std::chrono::nanoseconds;
  constexpr KORTime early(-1, 999'999'999);
  constexpr KORTime late(1'769'903'999, 1);
  static_assert(early < KORTime() && KORTime() < late);
  static_assert(early.ToSysTime().time_since_epoch() == nanoseconds(-1));
  static_assert(KORTime::FromSysTime(early.ToSysTime()) == early);
  static_assert(KORTime::FromSysTime(late.ToSysTime()) == late);
  EXPECT_EQ(Written(late), "2026-01-31T23:59:59.000000001Z");
  EXPECT_EQ(Written(early), "1969-12-31T23:59:59.999999999Z");
  EXPECT_EQ(HashOf(late), HashOf(KORTime(1'769'903'999, 1)));
  EXPECT_NE(HashOf(late), HashOf(KORTime(1'769'903'999, 2)));
}

TEST(StandardNeighbours, IdentifiersAreKeys) {
  const KORUuid first;
  const KORUuid second;
  std::unordered_set<KORUuid> set{first, second, first};
  EXPECT_EQ(set.size(), 2u);
  EXPECT_EQ(first < second, Written(first) < Written(second));
  EXPECT_EQ(Written(first).size(), KORUuid::kTextLength);
}

TEST(StandardNeighbours, UrisAreKeys) {
  const VYXInfUri uri("http://h:80/p?q#f");
  VYXInfUri other = uri;
  EXPECT_EQ(HashOf(uri), HashOf(other));
  EXPECT_TRUE((uri <=> other) == 0);
  other.SetPort(81);
  EXPECT_TRUE(uri < other);
  EXPECT_NE(HashOf(uri), HashOf(other));
  EXPECT_EQ(Written(uri), "http://h:80/p?q#f");
  EXPECT_EQ(std::set<VYXInfUri>({uri, other, uri}).size(), 2u);
}

TEST(StandardNeighbours, ErrorsShowMessageAndCode) {
  KORError::KORSetLastError(E_FAIL, "Disk full");
  const VYXInfError error(E_FAIL);
  EXPECT_EQ(Written(error), "Disk full (0x80004005)");
  EXPECT_EQ(Written(VYXInfError()), "no error (0x00000000)");
  EXPECT_EQ(Written(VYXInfError(1)), "Unknown error with code 1 (0x00000001)");
  EXPECT_EQ(HashOf(error), HashOf(VYXInfError(error)));
  EXPECT_EQ(std::unordered_set<VYXInfError>({error, VYXInfError(E_FAIL), error}).size(), 2u);
}

TEST(StandardNeighbours, TreesAndViewsStream) {
  VYXPropertyTree tree;
  VYXPropertyAccess object;
  VYXListAccess list;
  EXPECT_EQ(Written(object), "null");
  tree.GetPropertyAccess("o", object, true);
  object.GetListAccess("l", list, true);
  list.AddInteger(1);
  EXPECT_EQ(Written(list), "[1]");
  EXPECT_EQ(Written(object), "{\"l\":[1]}");
  EXPECT_EQ(Written(tree), "{\"o\":{\"l\":[1]}}");
  VYXPropertyTree other;
  swap(tree, other);
  EXPECT_EQ(Written(tree), "{}");
  EXPECT_EQ(Written(list), "[1]");
  std::swap(tree, other);
  list.AddInteger(2);
  EXPECT_EQ(Written(tree), "{\"o\":{\"l\":[1,2]}}");
}

TEST(StandardNeighbours, ListsAreRanges) {
  KORListValvyx_int64_t numbers;
  for (const std::int64_t number : {3, 1, 2}) {
    numbers.Append(number);
  }
  EXPECT_THAT(std::as_const(numbers), ElementsAre(3, 1, 2));
  const std::int64_t* const first = &numbers[1];
  std::ranges::sort(numbers);
  EXPECT_THAT(numbers, ElementsAre(1, 2, 3));
  EXPECT_EQ(&numbers[1], first);
  EXPECT_EQ(std::accumulate(numbers.begin(), numbers.end(), std::int64_t{0}), 6);
  EXPECT_EQ(numbers.begin()[2], 3);
  EXPECT_EQ(*std::ranges::lower_bound(numbers, 2), 2);
  EXPECT_EQ(numbers.end() - numbers.begin(), 3);
  EXPECT_TRUE(numbers.begin() < numbers.end());
  auto place = 1 + numbers.begin();
  EXPECT_EQ(*place++, 2);
  EXPECT_EQ(*place--, 3);
  EXPECT_EQ(*(place - 1), 1);
  *place = 7;
  EXPECT_EQ(numbers[2], 7);
  EXPECT_EQ(*std::make_reverse_iterator(numbers.end()), 3);
  EXPECT_TRUE(KORListValvyx_bool().begin() == KORListValvyx_bool().end());
}

TEST(StandardNeighbours, ListsOfObjectsAreRanges) {
  KORListValVYXInfError errors;
  errors.Append(VYXInfError(2));
  errors.Append(VYXInfError(1));
  EXPECT_EQ(std::ranges::find(errors, 1, &VYXInfError::GetHResult) - errors.begin(), 1);
  EXPECT_EQ(errors.begin()->GetHResult(), 2);
  KORListValVYXPropertyTree trees;
  trees.Append(VYXPropertyTree());
  for (VYXPropertyTree& tree : trees) {
    tree.SetBoolean("k", true);
  }
  EXPECT_EQ(Written(trees[1]), "{\"k\":true}");
  KORRawCollPV pointers;
  int object = 0;
  pointers.Append(&object);
  EXPECT_THAT(pointers, ElementsAre(&object));
  KORRawCollPV copy(pointers);
  EXPECT_TRUE(copy == pointers);
  *copy.begin() = nullptr;
  EXPECT_FALSE(copy == pointers);
}

TEST(StandardNeighbours, ListsAreOrderedByTheirElements) {
  const KORUnicodeString texts[] = {"a", "b", "c"};
  const KORListValKORUnicodeString two(texts, 2);
  const KORListValKORUnicodeString three(texts, 3);
  EXPECT_TRUE(two < three);
  EXPECT_TRUE(two < KORListValKORUnicodeString(texts + 1, 1));
  KORRawColldouble numbers;
  KORRawColldouble other;
  numbers.Append(1);
  other.Append(std::numeric_limits<double>::quiet_NaN());
  EXPECT_TRUE((numbers <=> other) == std::partial_ordering::unordered);
  EXPECT_TRUE(KORRawColldouble() < numbers);
}

TEST(StandardNeighbours, PathListsAreRanges) {
  const QB::Paths paths(KORUnicodeString("/a;/b;/c"));
  std::vector<std::string> reversed;
  for (auto place = paths.end(); place != paths.begin();) {
    reversed.emplace_back((*--place).ToStringView());
  }
  EXPECT_THAT(reversed, ElementsAre("/c", "/b", "/a"));
  EXPECT_TRUE(paths.begin()[1] == "/b");
  EXPECT_EQ(std::ranges::size(paths), 3u);
  EXPECT_TRUE(*std::ranges::find(paths, QB::StringView(std::string_view("/c"))) == "/c");
  auto place = paths.end();
  EXPECT_TRUE(*--place == "/c");
  EXPECT_TRUE(*(place -= 2) == "/a");
  EXPECT_TRUE(*place++ == "/a");
  EXPECT_TRUE(*place-- == "/b");
  EXPECT_TRUE(place < paths.end());
}

}  // namespace
