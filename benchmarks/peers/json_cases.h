#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "compare.h"

/**
 * The cases of the topic "json": whole documents, and an object's members by key. An Engine is what one library needs
 * for them:
 *
 *     struct Engine {
 *       using Text = ...;      // made from a std::string outside the measured time, as are keys
 *       using Document = ...;  // default-constructible; its destructor releases it
 *       static void Parse(const Text& iText, Document& oDocument);
 *       static std::string or alike Stringify(const Document& iDocument);
 *       static void Copy(const Document& iFrom, Document& oTo);
 *       static bool Equal(const Document& iLeft, const Document& iRight);
 *       using Key = ...;
 *       using Object = ...;  // with members, default-constructible
 *       static void Set(Object& ioObject, const Key& iKey, std::int64_t iValue);
 *       static std::int64_t Get(const Object& iObject, const Key& iKey);
 *       static void Remove(Object& ioObject, const Key& iKey);
 *     };
 *
 * Functions may be left out where the library has nothing like it.
 */
namespace Compare {

/// The keys of an object, by a fixed rule: words as members of documents are named.
inline std::vector<std::string> MemberNames(std::size_t iCount) {
  const char* const words[] = {"id",    "name",  "profile", "image", "url",  "count", "created",
                               "label", "width", "height",  "user",  "text", "color", "background"};
  std::mt19937 random(17);
  std::vector<std::string> names;
  for (std::size_t index = 0; index < iCount; ++index) {
    std::string name = words[random() % std::size(words)];
    name += "_";
    name += words[random() % std::size(words)];
    if (iCount > 64 || random() % 2 == 0 || std::find(names.begin(), names.end(), name) != names.end()) {
      name += "_" + std::to_string(index);
    }
    names.push_back(name);
  }
  return names;
}

inline std::string ContentOf(const std::filesystem::path& iPath) {
  std::ifstream file(iPath, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

/// A document's text, and the document once something asks for it.
template <class Engine>
class Loaded {
 public:
  explicit Loaded(std::filesystem::path iPath) : _path(std::move(iPath)) {}

  const typename Engine::Text& Text() {
    if (_text == nullptr) {
      _text = std::make_unique<typename Engine::Text>(ContentOf(_path));
    }
    return *_text;
  }
  const typename Engine::Document& Document() {
    if (_document == nullptr) {
      _document = std::make_unique<typename Engine::Document>();
      Engine::Parse(Text(), *_document);
    }
    return *_document;
  }

 private:
  std::filesystem::path _path;
  std::unique_ptr<typename Engine::Text> _text;
  std::unique_ptr<typename Engine::Document> _document;
};

template <class Engine>
std::string TextOf(const typename Engine::Document& iDocument) {
  const auto text = Engine::Stringify(iDocument);
  return std::string(text.data(), text.size());
}

template <class Engine>
void AddParse(const std::string& iName, const std::shared_ptr<Loaded<Engine>>& iLoaded) {
  const auto run = [iLoaded](benchmark::State& ioState) {
    const auto& text = iLoaded->Text();
    for (auto _ : ioState) {
      typename Engine::Document document;
      Engine::Parse(text, document);
      benchmark::DoNotOptimize(document);
    }
  };
  Add({"parse/" + iName, run, [iLoaded] { return TextOf<Engine>(iLoaded->Document()); }});
}

template <class Engine>
void AddStringify(const std::string& iName, const std::shared_ptr<Loaded<Engine>>& iLoaded) {
  const auto run = [iLoaded](benchmark::State& ioState) {
    const auto& document = iLoaded->Document();
    for (auto _ : ioState) {
      auto text = Engine::Stringify(document);
      benchmark::DoNotOptimize(text);
    }
  };
  Add({"stringify/" + iName, run, [iLoaded] { return TextOf<Engine>(iLoaded->Document()); }});
}

template <class Engine>
void AddCopy(const std::string& iName, const std::shared_ptr<Loaded<Engine>>& iLoaded) {
  const auto run = [iLoaded](benchmark::State& ioState) {
    const auto& document = iLoaded->Document();
    for (auto _ : ioState) {
      typename Engine::Document copy;
      Engine::Copy(document, copy);
      benchmark::DoNotOptimize(copy);
    }
  };
  const auto result = [iLoaded] {
    typename Engine::Document copy;
    Engine::Copy(iLoaded->Document(), copy);
    return TextOf<Engine>(copy);
  };
  Add({"copy/" + iName, run, result});
}

/// Compares two documents that were read apart.
template <class Engine>
void AddEqual(const std::string& iName, const std::shared_ptr<Loaded<Engine>>& iLoaded) {
  const auto run = [iLoaded](benchmark::State& ioState) {
    const auto& document = iLoaded->Document();
    typename Engine::Document other;
    Engine::Parse(iLoaded->Text(), other);
    for (auto _ : ioState) {
      benchmark::DoNotOptimize(Engine::Equal(document, other));
    }
  };
  const auto result = [iLoaded] {
    typename Engine::Document same;
    Engine::Parse(iLoaded->Text(), same);
    typename Engine::Document other;
    Engine::Parse(typename Engine::Text("{\"other\":1}"), other);
    const bool isEqual = Engine::Equal(iLoaded->Document(), same);
    const bool isOtherEqual = Engine::Equal(iLoaded->Document(), other);
    return std::string(isEqual && !isOtherEqual ? "as expected" : "wrong");
  };
  Add({"equal/" + iName, run, result});
}

/// Keys in the order of their use, and an object that holds them all.
template <class Engine>
struct Members {
  explicit Members(std::size_t iCount) {
    std::vector<std::string> names = MemberNames(iCount);
    std::shuffle(names.begin(), names.end(), std::mt19937(5));
    for (const std::string& name : names) {
      keys.emplace_back(name.c_str());
      Engine::Set(object, keys.back(), static_cast<std::int64_t>(keys.size()));
    }
    std::shuffle(keys.begin(), keys.end(), std::mt19937(6));
  }

  std::string Sum() const {
    std::int64_t sum = 0;
    std::int64_t place = 0;
    for (const auto& key : keys) {
      sum += ++place * Engine::Get(object, key);
    }
    return std::to_string(sum);
  }

  std::vector<typename Engine::Key> keys;
  typename Engine::Object object;
};

/// One operation with one key after the other; the time is that of one.
template <class Engine, class Operation>
void RunByKey(benchmark::State& ioState, std::size_t iCount, Operation&& iOperation) {
  Members<Engine> members(iCount);
  while (ioState.KeepRunningBatch(static_cast<benchmark::IterationCount>(iCount))) {
    for (const auto& key : members.keys) {
      iOperation(members.object, key);
    }
  }
}

template <class Engine>
void AddGet(std::size_t iCount) {
  const auto run = [iCount](benchmark::State& ioState) {
    RunByKey<Engine>(ioState, iCount, [](const typename Engine::Object& iObject, const typename Engine::Key& iKey) {
      benchmark::DoNotOptimize(Engine::Get(iObject, iKey));
    });
  };
  Add({"get/" + std::to_string(iCount), run, [iCount] { return Members<Engine>(iCount).Sum(); }});
}

template <class Engine>
void AddBuild(std::size_t iCount) {
  const auto run = [iCount](benchmark::State& ioState) {
    const Members<Engine> members(iCount);
    while (ioState.KeepRunningBatch(static_cast<benchmark::IterationCount>(iCount))) {
      typename Engine::Object object;
      for (const auto& key : members.keys) {
        Engine::Set(object, key, 1);
      }
      benchmark::DoNotOptimize(object);
    }
  };
  Add({"build/" + std::to_string(iCount), run, [iCount] { return Members<Engine>(iCount).Sum(); }});
}

template <class Engine>
void AddRemove(std::size_t iCount) {
  const auto removeAndSet = [](typename Engine::Object& ioObject, const typename Engine::Key& iKey) {
    Engine::Remove(ioObject, iKey);
    Engine::Set(ioObject, iKey, 7);
  };
  const auto result = [iCount, removeAndSet] {
    Members<Engine> members(iCount);
    for (std::size_t index = 0; index < members.keys.size(); index += 3) {
      removeAndSet(members.object, members.keys[index]);
    }
    return members.Sum();
  };
  const auto run = [iCount, removeAndSet](benchmark::State& ioState) {
    RunByKey<Engine>(ioState, iCount, removeAndSet);
  };
  Add({"remove and set/" + std::to_string(iCount), run, result});
}

/// Adds what the library can do with the documents of the folder that VYX_BENCH_DATA names.
template <class Engine>
void AddDocumentCases() {
  const char* const folder = std::getenv("VYX_BENCH_DATA");
  for (const char* const name : {"twitter", "citm_catalog", "gsoc-2018", "canada", "canada_flat"}) {
    const std::filesystem::path path =
        std::filesystem::path(folder == nullptr ? "." : folder) / (name + std::string(".json"));
    if (!std::filesystem::exists(path)) {
      continue;
    }
    const auto loaded = std::make_shared<Loaded<Engine>>(path);
    AddParse<Engine>(name, loaded);
    AddStringify<Engine>(name, loaded);
    if constexpr (requires { &Engine::Copy; }) {
      AddCopy<Engine>(name, loaded);
    }
    if constexpr (requires { &Engine::Equal; }) {
      AddEqual<Engine>(name, loaded);
    }
  }
}

template <class Engine>
int RunJson(int iCount, char** iArguments) {
  AddDocumentCases<Engine>();
  if constexpr (requires { &Engine::Get; }) {
    for (const std::size_t count : {8U, 64U, 4096U}) {
      AddGet<Engine>(count);
      AddBuild<Engine>(count);
      AddRemove<Engine>(count);
    }
  }
  return Run(iCount, iArguments);
}

}  // namespace Compare
