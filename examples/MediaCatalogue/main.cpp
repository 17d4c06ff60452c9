/**
 * MediaCatalogue: catalogues a folder's files as JSON, with nothing but the exported headers of the library.
 *
 * arguments reads the command line, walk lists the files, file_facts reads one of them, catalogue builds the tree,
 * results writes and verifies it, archive packs the files and verifies them, summary prints, messages holds what
 * the user reads. media_items are the files as media, media_tree transfers them, verify rebuilds and checks them.
 */

#include <exception>
#include <filesystem>
#include <iostream>
#include <stdexcept>
#include <string>
#include <system_error>
#include <vector>

#include "VYXInfSystemUtil.h"
#include "archive.h"
#include "arguments.h"
#include "catalogue.h"
#include "file_facts.h"
#include "media_tree.h"
#include "messages.h"
#include "results.h"
#include "summary.h"
#include "verify.h"
#include "walk.h"

namespace MediaCatalogue {

namespace {

constexpr int kDone = 0;
constexpr int kFailed = 1;
constexpr int kMisused = 2;

// Empty for a folder that can be listed, else what to tell the user.
KORUnicodeString ProblemOf(const std::filesystem::path& iFolder) {
  std::error_code error;
  const std::filesystem::directory_iterator probe(iFolder, error);
  const KORUnicodeString folder = Readable(iFolder.string().c_str());
  if (error == std::errc::no_such_file_or_directory) {
    return Say(kNoSuchFolder, {folder});
  }
  return error ? Say(kCannotList, {folder, error.message().c_str()}) : KORUnicodeString();
}

// The results' folder without links, made where it is missing.
std::filesystem::path MakeOut(const std::filesystem::path& iOut) {
  std::filesystem::create_directories(iOut);
  return std::filesystem::canonical(iOut);
}

void Fill(Catalogue& ioCatalogue, const std::vector<KORUnicodeString>& iFiles) {
  Progress progress(std::cout, iFiles.size());
  for (const KORUnicodeString& path : iFiles) {
    FileFacts facts;
    KORUnicodeString reason;
    if (ReadFacts(path, facts, reason)) {
      ioCatalogue.Add(path, facts);
    } else {
      std::cout << std::flush;
      std::cerr << "MediaCatalogue: " << Readable(path) << ": " << reason << '\n';
      ioCatalogue.AddFailure(path, reason);
    }
    progress.Step();
  }
}

void Report(const char* iWhat, const std::vector<KORUnicodeString>& iLines) {
  std::cout << std::flush;
  for (const KORUnicodeString& line : iLines) {
    std::cerr << "MediaCatalogue: " << iWhat << ": " << Readable(line) << '\n';
  }
}

// A folder whose name is no UTF-8 has no location, and its files are catalogued without media.
VYXPropertyTree ToTree(const Catalogue& iCatalogue, const KORUnicodeString& iFolder) {
  VYXPropertyTree tree = iCatalogue.ToTree(iFolder);
  if (Readable(iFolder) != iFolder) {
    Report("no media", {"the folder's name is no UTF-8"});
  } else if (tree.SetPropertyTree("media", TransferMedia(iCatalogue.Files(), iFolder.ConvertToChar())) < 0) {
    throw std::runtime_error("The media could not be added; the trace above tells why");
  }
  return tree;
}

// False where the archive is not what was catalogued.
bool Archive(const Catalogue& iCatalogue, const std::filesystem::path& iOut) {
  const KORUnicodeString path((iOut / kArchiveName).string().c_str());
  const ArchiveResult result = PackAndVerify(iCatalogue.Files(), path);
  Report("left out of the archive", result.leftOut);
  Report("wrong in the archive", result.differences);
  if (!result.differences.empty()) {
    return false;
  }
  std::cout << Say(kPacked, {Readable(path), Number(static_cast<std::int64_t>(result.packed))}) << std::endl;
  return true;
}

int Run(const Arguments& iArguments) {
  const KORUnicodeString problem = ProblemOf(iArguments.folder);
  if (!problem.IsEmpty()) {
    std::cerr << "MediaCatalogue: " << problem << '\n';
    return kMisused;
  }
  const std::filesystem::path out = MakeOut(iArguments.out);

  // The walk starts at the current folder: a search path would be split at the separators of a path list, which are
  // legal in a folder's name.
  std::filesystem::current_path(iArguments.folder);
  const KORUnicodeString folder(std::filesystem::current_path().string().c_str());
  std::cout << Say(kCataloguing, {Readable(folder)}) << std::endl;
  const std::vector<KORUnicodeString> files = ListFiles(out);

  Catalogue catalogue;
  Fill(catalogue, files);
  PrintSummary(std::cout, catalogue);

  const KORUnicodeString path((out / kCatalogueName).string().c_str());
  const std::size_t size = WriteAndVerify(ToTree(catalogue, folder), path);
  std::cout << Say(kWritten, {Readable(path), Number(static_cast<std::int64_t>(size))}) << std::endl;
  return Archive(catalogue, out) ? kDone : kFailed;
}

int Main(int iCount, const char* const* iValues) {
  try {
    Arguments arguments;
    std::string problem;
    if (!ParseArguments(iCount, iValues, arguments, problem)) {
      std::cerr << "MediaCatalogue: " << problem << "; MediaCatalogue --help tells more\n";
      return kMisused;
    }
    if (arguments.wantsHelp) {
      std::cout << kHelp;
      return kDone;
    }
    if (!arguments.catalogue.empty()) {
      return VerifyCatalogue(arguments.catalogue) == 0 ? kDone : kFailed;
    }
    return Run(arguments);
  } catch (const UnusableCatalogue& error) {
    std::cout << std::flush;
    std::cerr << "MediaCatalogue: " << error.what() << '\n';
    return kMisused;
  } catch (const std::exception& error) {
    std::cout << std::flush;
    std::cerr << "MediaCatalogue: " << error.what() << '\n';
    return kFailed;
  }
}

}  // namespace

}  // namespace MediaCatalogue

int main(int iCount, char** iValues) {
  return MediaCatalogue::Main(iCount, iValues);
}
