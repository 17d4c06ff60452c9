// Which reader turns JSON text into values, and what our own contract adds to it.
//
// Measures every *.json file of the folder that the environment variable VYX_BENCH_DATA names; without it there is
// nothing to measure. "Reader" is our contract: a padded copy, parsing with reused memory, and the search for the
// integer -0.

#include <benchmark/benchmark.h>
#include <rapidjson/encodedstream.h>
#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>
#include <simdjson.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "Quillbase/JSON/JIStream.h"
#include "Quillbase/JSON/JVisitor.h"
#include "platform/adapters/json_diagnosis.h"
#include "platform/adapters/json_reader.h"

namespace {

using VYX::Adapters::JsonDocument;
using VYX::Adapters::JsonFailure;
using VYX::Adapters::JsonNode;
using VYX::Adapters::JsonWalk;

struct Document {
  std::string name;
  std::string text;
};

void SimdjsonFresh(benchmark::State& ioState, const std::string& iText) {
  for ([[maybe_unused]] auto round : ioState) {
    simdjson::dom::parser parser;
    benchmark::DoNotOptimize(parser.parse(iText).error());
  }
}

void SimdjsonReused(benchmark::State& ioState, const std::string& iText) {
  simdjson::dom::parser parser;
  const simdjson::padded_string padded(iText);
  for ([[maybe_unused]] auto round : ioState) {
    benchmark::DoNotOptimize(parser.parse(padded).error());
  }
}

template <unsigned kFlags>
void RapidjsonEvents(benchmark::State& ioState, const std::string& iText) {
  for ([[maybe_unused]] auto round : ioState) {
    rapidjson::MemoryStream bytes(iText.data(), iText.size());
    rapidjson::EncodedInputStream<rapidjson::UTF8<>, rapidjson::MemoryStream> stream(bytes);
    rapidjson::BaseReaderHandler<> handler;
    rapidjson::Reader reader;
    benchmark::DoNotOptimize(reader.Parse<kFlags>(stream, handler).IsError());
  }
}

void Reader(benchmark::State& ioState, const std::string& iText) {
  for ([[maybe_unused]] auto round : ioState) {
    JsonDocument document;
    JsonFailure failure;
    benchmark::DoNotOptimize(document.Parse(iText, failure));
  }
}

double SumOf(JsonNode iNode) {
  double sum = iNode.Number() + static_cast<double>(iNode.Text().size());
  for (JsonWalk walk(iNode); walk.Next();) {
    sum += SumOf(walk.Value());
  }
  return sum;
}

void ReaderAndWalk(benchmark::State& ioState, const std::string& iText) {
  for ([[maybe_unused]] auto round : ioState) {
    JsonDocument document;
    JsonFailure failure;
    document.Parse(iText, failure);
    benchmark::DoNotOptimize(SumOf(document.Root()));
  }
}

// Goes through all objects, as a property tree does that stores nothing.
class Traveller : public JSON::JVisitor {
 public:
  Traveller() : JVisitor(true) {}
  using JVisitor::Visit;
  bool Visit(const QB::StringView& /*iKey*/, const std::vector<JSON::JIStream>& iObjects) override {
    return std::all_of(iObjects.begin(), iObjects.end(),
                       [this](const auto& iObject) { return iObject.Apply(*this, nullptr); });
  }
  bool Visit(const QB::StringView& /*iKey*/, const JSON::JIStream& iObject) override {
    return iObject.Apply(*this, nullptr);
  }
  bool VisitAny(const QB::StringView& /*iKey*/, const JSON::JIStream& /*iArray*/) override { return true; }
};

void StreamAndVisits(benchmark::State& ioState, const std::string& iText) {
  const KORUnicodeString text{std::string_view(iText)};
  for ([[maybe_unused]] auto round : ioState) {
    JSON::JIStream stream;
    stream.Parse(text, false);
    Traveller traveller;
    benchmark::DoNotOptimize(stream.Apply(traveller, nullptr));
  }
}

void NegativeZeroSearch(benchmark::State& ioState, const std::string& iText) {
  for ([[maybe_unused]] auto round : ioState) {
    benchmark::DoNotOptimize(VYX::Adapters::MayHoldNegativeZero(iText));
  }
}

void StrictReading(benchmark::State& ioState, const std::string& iText) {
  for ([[maybe_unused]] auto round : ioState) {
    benchmark::DoNotOptimize(VYX::Adapters::DiagnoseJson(iText).isWellFormed);
  }
}

std::vector<Document> ReadDocuments(const char* iFolder) {
  std::vector<Document> documents{{"tiny", R"({"name":"reader","count":3,"on":true,"x":[1,2]})"}};
  for (const auto& entry : std::filesystem::directory_iterator(iFolder)) {
    if (entry.path().extension() == ".json") {
      std::ifstream file(entry.path(), std::ios::binary);
      documents.push_back({entry.path().stem().string(), std::string(std::istreambuf_iterator<char>(file), {})});
    }
  }
  std::sort(documents.begin() + 1, documents.end(), [](const auto& a, const auto& b) { return a.name < b.name; });
  return documents;
}

void Register(const Document& iDocument) {
  constexpr unsigned kFull = rapidjson::kParseFullPrecisionFlag;
  constexpr unsigned kSafe = kFull | rapidjson::kParseIterativeFlag | rapidjson::kParseValidateEncodingFlag;
  const struct {
    const char* name;
    void (*run)(benchmark::State&, const std::string&);
  } candidates[] = {
      {"SimdjsonFresh", SimdjsonFresh},
      {"SimdjsonReused", SimdjsonReused},
      {"RapidjsonFull", RapidjsonEvents<kFull>},
      {"RapidjsonFullIterativeValidating", RapidjsonEvents<kSafe>},
      {"Reader", Reader},
      {"ReaderAndWalk", ReaderAndWalk},
      {"StreamAndVisits", StreamAndVisits},
      {"NegativeZeroSearch", NegativeZeroSearch},
      {"StrictReading", StrictReading},
  };
  for (const auto& candidate : candidates) {
    const auto run = [candidate, &iDocument](benchmark::State& ioState) {
      candidate.run(ioState, iDocument.text);
      ioState.SetBytesProcessed(ioState.iterations() * static_cast<std::int64_t>(iDocument.text.size()));
    };
    benchmark::RegisterBenchmark((std::string(candidate.name) + "/" + iDocument.name).c_str(), run);
  }
}

}  // namespace

int main(int iCount, char** iArguments) {
  const char* const folder = std::getenv("VYX_BENCH_DATA");
  if (folder == nullptr || !std::filesystem::is_directory(folder)) {
    std::fputs("json_reader_bench: VYX_BENCH_DATA names no folder of JSON documents; nothing is measured\n", stderr);
    return 0;
  }
  benchmark::Initialize(&iCount, iArguments);
  const std::vector<Document> documents = ReadDocuments(folder);
  for (const Document& document : documents) {
    Register(document);
  }
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
