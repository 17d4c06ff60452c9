#include <memory>
#include <string>

#include "VYXInfStringUtil.h"
#include "growth/workloads.h"

namespace VYX::Growth {
namespace {

using Util = VYXInfStringUtil;
using Text = std::shared_ptr<KORUnicodeString>;

Text Repeated(const char* iPiece, std::size_t iCount) {
  auto text = std::make_shared<KORUnicodeString>();
  for (std::size_t number = 0; number < iCount; ++number) {
    text->Append(iPiece);
  }
  return text;
}

// Keeps an answer from being thought away.
void Keep(long iValue) {
  static volatile long kept = 0;
  kept = kept + iValue;
}

Work Match(std::size_t iSize, const std::string&) {
  return [text = Repeated("a", iSize)] { Keep(text->WildMatch("*a*a*a*a*a*b", '*', '\\')); };
}

Work MatchNonAscii(std::size_t iSize, const std::string&) {
  return [text = Repeated("\xC3\xA4", iSize)] { Keep(text->WildMatch("*\xC3\xA4*\xC3\xA4*b", '*', '\\')); };
}

Work Replace(std::size_t iSize, const std::string&) {
  return [text = Repeated("word ", iSize)] { text->ReplaceAll(" ", " and "); };
}

Work ReplaceCharacters(std::size_t iSize, const std::string&) {
  return [text = Repeated("w\xC3\xB6rd ", iSize)] {
    Keep(Util::ReplaceCharacters(*text, " \xC3\xB6", "__").GetLengthInChar());
  };
}

Work Split(std::size_t iSize, const std::string&) {
  return [text = Repeated("word ", iSize)] { Keep(Util::Split(*text, " ").Size()); };
}

Work Join(std::size_t iSize, const std::string&) {
  return [texts = Util::Split(*Repeated("word ", iSize), " ")] { Keep(Util::Join(texts, ", ").GetLengthInChar()); };
}

Work WalkForwards(std::size_t iSize, const std::string&) {
  return [text = Repeated("\xC3\xA4", iSize)] {
    for (int position = 0; position < text->GetLengthInChar(); ++position) {
      Keep((*text)[position] == KORUnicodeChar('b') ? 1 : 0);
    }
  };
}

// The answer to which the ratio is compared: this one must be found out.
Work Quadratic(std::size_t iSize, const std::string&) {
  return [iSize] {
    for (std::size_t row = 0; row < iSize; ++row) {
      for (std::size_t column = 0; column < iSize; ++column) {
        Keep(1);
      }
    }
  };
}

}  // namespace

void AddTextWorkloads(std::map<std::string, Prepare>& ioWorkloads) {
  ioWorkloads["wildcard"] = Match;
  ioWorkloads["wildcard-non-ascii"] = MatchNonAscii;
  ioWorkloads["replace"] = Replace;
  ioWorkloads["replace-characters"] = ReplaceCharacters;
  ioWorkloads["split"] = Split;
  ioWorkloads["join"] = Join;
  ioWorkloads["walk-non-ascii"] = WalkForwards;
  ioWorkloads["quadratic"] = Quadratic;
}

}  // namespace VYX::Growth
