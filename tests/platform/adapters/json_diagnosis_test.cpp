#include "platform/adapters/json_diagnosis.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <string_view>

#include "platform/adapters/json_reader.h"

using VYX::Adapters::DiagnoseJson;
using VYX::Adapters::JsonDiagnosis;
using VYX::Adapters::JsonDocument;
using VYX::Adapters::JsonFailure;
using VYX::Adapters::MayHoldNegativeZero;

namespace {

TEST(JsonDiagnosis, RewritesOnlyWhatTheFastReaderCannotTake) {
  const struct {
    std::string_view text, rewritten;
  } rows[] = {
      {"[1,2.5,\"a\"]", ""},
      {"[18446744073709551615,-9223372036854775808]", ""},
      {"[18446744073709551616]", "[1.8446744073709552e+19]"},
      {"[1,-9223372036854775809,2]", "[1,-9.2233720368547758e+18,2]"},
      {"-0", "-0.0"},
      {"[-0,\"-0\",-0.0,-0e1]", "[-0.0,\"-0\",-0.0,-0e1]"},
      {"{\"a\x01\":\"\x1F\x7F\"}", "{\"a\\u0001\":\"\\u001f\x7F\"}"},
  };
  for (const auto& row : rows) {
    const JsonDiagnosis diagnosis = DiagnoseJson(row.text);
    EXPECT_TRUE(diagnosis.isWellFormed) << row.text;
    EXPECT_EQ(diagnosis.isRewritten, !row.rewritten.empty()) << row.text;
    EXPECT_EQ(diagnosis.rewritten, row.rewritten) << row.text;
  }
}

TEST(JsonDiagnosis, LooksForNegativeZeroWithoutTheNeighboursOfOtherNumbers) {
  const struct {
    std::string_view text;
    bool mayHold;
  } rows[] = {{"", false},
              {"-", false},
              {"-0", true},
              {"[-0]", true},
              {"[-0.5]", false},
              {"[-0e1]", false},
              {"[1e-05]", false},
              {"\"2018-07-08\"", false},
              {"[\"x -0 y\"]", true},
              {"[10,-10]", false}};
  for (const auto& row : rows) {
    EXPECT_EQ(MayHoldNegativeZero(row.text), row.mayHold) << row.text;
  }
}

// Both readings take the same language: whatever the fast one takes or refuses, the strict one has to agree.
TEST(JsonDiagnosis, AgreesWithTheFastReaderOnDamagedTexts) {
  const std::string seeds[] = {
      R"({"a":[1,-2.5e-3,true,false,null],"b":{"c":"d\n\u00e9\ud83d\ude00"},"a":"\"\\"})",
      "[[],{},\"\",0,-0,[{\"x\":[1,2,[3]]}],\"\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80\",1E+5,12345678901234567890123]",
      " { \"k\\u0041\" : [ 0.1 , 1e308 , 18446744073709551615 ] , \"\\/\\b\" : \"\\udbff\\udfff\" } ",
  };
  constexpr std::string_view kPieces = "[]{}:,\"\\0123456789.eE+-truefalsn \t\n\x01\x1F\x7F\x80\xC3\xE2\xED\xF0\xFFud";
  std::mt19937 random(20240501);
  const auto below = [&random](std::size_t iLimit) { return static_cast<std::size_t>(random() % iLimit); };
  std::size_t accepted = 0;
  for (int round = 0; round < 60000; ++round) {
    std::string text = seeds[below(std::size(seeds))];
    for (std::size_t edit = below(3); edit < 3; ++edit) {
      const std::size_t place = below(text.size());
      switch (below(3)) {
        case 0:
          text[place] = kPieces[below(kPieces.size())];
          break;
        case 1:
          text.insert(place, 1, kPieces[below(kPieces.size())]);
          break;
        default:
          text.erase(place, 1);
          break;
      }
    }
    JsonDocument document;
    JsonFailure failure;
    const bool isAccepted = document.Parse(text, failure);
    accepted += isAccepted ? 1 : 0;
    const JsonDiagnosis diagnosis = DiagnoseJson(text);
    ASSERT_EQ(isAccepted, diagnosis.isWellFormed) << text << '\n' << failure.reason << '\n' << diagnosis.reason;
    ASSERT_EQ(failure.reason, diagnosis.reason) << text;
  }
  EXPECT_GT(accepted, 1000U);
}

}  // namespace
