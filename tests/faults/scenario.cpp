#include "faults/scenario.h"

#include <iterator>
#include <ostream>

namespace VYX::Test {

void PrintTo(const NamedScenario& iScenario, std::ostream* ioStream) {
  *ioStream << iScenario.name;
}

std::vector<NamedScenario> AllScenarios() {
  std::vector<NamedScenario> all;
  for (auto family : {FileScenarios(), FolderScenarios(), ZipScenarios(), LogScenarios(), ProcessScenarios()}) {
    all.insert(all.end(), std::make_move_iterator(family.begin()), std::make_move_iterator(family.end()));
  }
  return all;
}

}  // namespace VYX::Test
