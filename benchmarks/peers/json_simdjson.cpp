// The physical limit of parsing: a read-only tape, made by a parser that is reused. It is no peer, because nothing can
// be changed in it.
#include <simdjson.h>

#include <string>

#include "json_cases.h"

namespace {

simdjson::dom::parser& Parser() {
  static simdjson::dom::parser parser;
  return parser;
}

struct Engine {
  struct Document {};  // the parser holds the one that it read last
  using Text = simdjson::padded_string;

  static void Parse(const Text& iText, Document& /*oDocument*/) {
    benchmark::DoNotOptimize(Parser().parse(iText).error());
  }
  static std::string Stringify(const Document& /*iDocument*/) { return simdjson::minify(Parser().doc.root()); }
};

}  // namespace

int main(int iCount, char** iArguments) {
  const char* const folder = std::getenv("VYX_BENCH_DATA");
  for (const char* const name : {"twitter", "citm_catalog", "gsoc-2018", "canada", "canada_flat"}) {
    const auto path = std::filesystem::path(folder == nullptr ? "." : folder) / (name + std::string(".json"));
    if (std::filesystem::exists(path)) {
      Compare::AddParse<Engine>(name, std::make_shared<Compare::Loaded<Engine>>(path));
    }
  }
  return Compare::Run(iCount, iArguments);
}
