/**
 * MediaCatalogue: catalogues a folder's files as JSON, with nothing but the exported headers of the library.
 *
 * arguments reads the command line, run goes through the steps, run_log is their log, performance measures
 * them.
 *
 * walk lists the files, file_facts reads one of them, catalogue collects them as a tree, results writes and verifies
 * that, archive packs the files and verifies them, summary prints, messages holds what the user reads. media_items are
 * the files as media, media_tree transfers them, verify rebuilds them in a later run and checks the files.
 */

#include <exception>
#include <iostream>
#include <string>
#include <vector>

#include "KORSysBase/KORProcess.h"
#include "arguments.h"
#include "run.h"
#include "verify.h"

namespace MediaCatalogue {

namespace {

int Fail(const std::exception& iError, int iStatus) {
  std::cout << std::flush;
  std::cerr << "MediaCatalogue: " << iError.what() << '\n';
  return iStatus;
}

int Main(const KORListValKORUnicodeString& iValues) {
  try {
    std::vector<const char*> values;
    for (const KORUnicodeString& value : iValues) {
      values.push_back(value.CastToCharPtr());
    }
    Arguments arguments;
    std::string problem;
    if (!ParseArguments(static_cast<int>(values.size()), values.data(), arguments, problem)) {
      std::cerr << "MediaCatalogue: " << problem << "; MediaCatalogue --help tells more\n";
      return kMisused;
    }
    if (arguments.wantsHelp) {
      std::cout << kHelp;
      return kDone;
    }
    return arguments.catalogue.empty() ? CatalogueFolder(arguments) : VerifyFiles(arguments);
  } catch (const UnusableCatalogue& error) {
    return Fail(error, kMisused);
  } catch (const std::exception& error) {
    return Fail(error, kFailed);
  }
}

}  // namespace

}  // namespace MediaCatalogue

int main(int iCount, char** iValues) {
  return MediaCatalogue::Main(KORGetProgramArguments(iCount, iValues));
}
