#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "support/temporary_folder.h"

namespace VYX::Test {

/// How one run of a scenario ended, for its check.
struct Ending {
  long code = 0;                ///< negative for a failure that was told to the caller
  bool isTold = false;          ///< something was written to standard output or standard error
  bool mayLeaveFile = false;    ///< the host has refused to remove something
  bool mayLeaveFolder = false;  ///< the same, or something that removing a folder takes
  bool isHostSound = true;      ///< no call to the host failed
};

/**
 * A piece of work on the host, done again and again in a fresh folder while something fails.
 *
 * The constructor lays out the ground and prepares what the work takes, so that nothing but the library allocates and
 * calls the host in Run.
 */
class Scenario {
 public:
  virtual ~Scenario() = default;

  /// Does the work; a negative code where the library told of a failure.
  virtual long Run() = 0;

  /// Expects what must hold however the work ended.
  virtual void Check(const Ending& iEnding) = 0;

 protected:
  TemporaryFolder _folder;
};

/// A scenario by its name.
struct NamedScenario {
  const char* name;
  std::function<std::unique_ptr<Scenario>()> make;
  int leastPoints;        ///< fewer than these show that the faults do not reach the work
  bool mayThrow = false;  ///< the work answers by value and lets the want of memory out
};

void PrintTo(const NamedScenario& iScenario, std::ostream* ioStream);

std::vector<NamedScenario> FileScenarios();
std::vector<NamedScenario> FolderScenarios();
std::vector<NamedScenario> ZipScenarios();
std::vector<NamedScenario> LogScenarios();
std::vector<NamedScenario> ProcessScenarios();

/// All of them.
std::vector<NamedScenario> AllScenarios();

/// Makes a scenario of a class.
template <class Kind>
std::function<std::unique_ptr<Scenario>()> Maker() {
  return [] { return std::make_unique<Kind>(); };
}

}  // namespace VYX::Test
