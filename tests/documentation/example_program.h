#pragma once

#include <cstring>
#include <initializer_list>
#include <iostream>
#include <string_view>
#include <type_traits>

#include "KORSysTS/KORUnicodeString.h"

/// What a program of collected examples consists of besides them.
namespace Documentation {

inline void ShowOne(std::string_view iText) {
  std::cout << '"';
  for (const char character : iText) {
    std::cout << (character == '"' || character == '\\' ? "\\" : "") << character;
  }
  std::cout << '"';
}
inline void ShowOne(const KORUnicodeString& iText) {
  ShowOne(iText.ToStringView());
}
inline void ShowOne(const char* iText) {
  ShowOne(std::string_view(iText));
}

template <class Number>
requires std::is_arithmetic_v<Number>
void ShowOne(Number iNumber) {
  std::cout << std::boolalpha << iNumber << std::noboolalpha;
}

template <class List>
requires requires(const List& iList) {
  iList.begin() != iList.end();
}
void ShowOne(const List& iList) {
  const char* separator = "";
  for (const auto& element : iList) {
    std::cout << separator;
    ShowOne(element);
    separator = ", ";
  }
}

/// Prints a value the way that a document writes it: texts in quotation marks, elements of lists joined by commas.
template <class Value>
void Show(const Value& iValue) {
  ShowOne(iValue);
  std::cout << '\n';
}

struct NamedExample {
  const char* name;
  int (*run)();
};

/// Runs the example that the first argument names; 2 where there is none of that name.
inline int RunExample(std::initializer_list<NamedExample> iExamples, int iCount, char** iArguments) {
  for (const NamedExample& example : iExamples) {
    if (iCount > 1 && std::strcmp(example.name, iArguments[1]) == 0) {
      return example.run();
    }
  }
  std::cerr << "no such example\n";
  return 2;
}

}  // namespace Documentation
