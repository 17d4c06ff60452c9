// Texts: an index of words, in the order of the alphabet whatever their letter case, and names for a program's source.

#include <iostream>
#include <map>

#include "VYXInfStringUtil.h"

using Counts = std::map<KORUnicodeString, int, VYXInfStringUtil::VYXStringLessIgnoreCase>;

static Counts CountWords(const KORUnicodeString& iText) {
  Counts counts;
  const KORUnicodeString spaced = VYXInfStringUtil::ReplaceCharacters(iText, ".,;!\n", " ");
  for (const KORUnicodeString& word : VYXInfStringUtil::SplitV(spaced, " ", true)) {
    ++counts[word];
  }
  return counts;
}

int main() {
  const KORUnicodeString text("Troms\xC3\xB8 and BERGEN; Bergen and bergen.");
  for (const auto& [word, count] : CountWords(text)) {
    std::cout << word << " (" << word.GetLengthInChar() << " characters, " << word.GetLengthInByte()
              << " bytes): " << count << "\n";
  }

  std::vector<KORUnicodeString> names;
  for (const char* name : {"media_name", "media_description"}) {
    names.push_back(VYXInfStringUtil::ConvertSnakeToCamel(name));
  }
  std::cout << VYXInfStringUtil::Join(names, ", ") << "\n";

  using Condition = VYXInfStringUtil::CompareStringCondition;
  for (const char* file : {"fjord.jpg", "notes.txt"}) {
    const bool isPicture = VYXInfStringUtil::StringMatchesByCriterion(Condition::WildMatch, "*.jp*g", file);
    std::cout << file << (isPicture ? " is a picture\n" : " is none\n");
  }
  return 0;
}
