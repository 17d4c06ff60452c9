#pragma once

#include <benchmark/benchmark.h>

#include <functional>
#include <string>

/**
 * What every program that measures one library for comparison has in common. Such a program registers its cases and
 * ends in RunComparison:
 *
 *     int main(int iCount, char** iArguments) {
 *       Compare::Add({"encode/32", [](benchmark::State& ioState) { ... }, [] { return Encode(kText); }});
 *       return Compare::Run(iCount, iArguments);
 *     }
 *
 * Programs of one topic name their cases alike. "--results=FOLDER" writes the result of every case to a file of its
 * own, so that whoever compares times can first compare these; without it the program is an ordinary Google Benchmark.
 */
namespace Compare {

/// A piece of work that every library of a topic does.
struct Case {
  std::string name;
  std::function<void(benchmark::State&)> run;
  std::function<std::string()> result;  ///< what the work gives, in a form that does not depend on the library
};

/// Registers a case.
void Add(Case iCase);

/// Runs what the arguments ask for; answers the exit code of the program.
int Run(int iCount, char** iArguments);

}  // namespace Compare
