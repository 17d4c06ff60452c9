#include "run.h"

#include <filesystem>
#include <iostream>
#include <stdexcept>
#include <string>
#include <system_error>
#include <vector>

#include "archive.h"
#include "catalogue.h"
#include "file_facts.h"
#include "media_tree.h"
#include "messages.h"
#include "performance.h"
#include "results.h"
#include "run_log.h"
#include "summary.h"
#include "verify.h"
#include "walk.h"

namespace MediaCatalogue {

namespace {

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

std::vector<KORUnicodeString> List(Performance& ioPerformance, const std::filesystem::path& iOut,
                                   const std::filesystem::path& iLogFile) {
  const Performance::Step step(ioPerformance, "ListFiles");
  return ListFiles(iOut, iLogFile);
}

void Fill(Performance& ioPerformance, Catalogue& ioCatalogue, const std::vector<KORUnicodeString>& iFiles) {
  const Performance::Step step(ioPerformance, "ReadFiles");
  Progress progress(std::cout, iFiles.size());
  for (const KORUnicodeString& path : iFiles) {
    FileFacts facts;
    KORUnicodeString reason;
    if (ReadFacts(path, facts, reason)) {
      ioCatalogue.Add(path, facts);
    } else {
      std::cout << std::flush;
      std::cerr << "MediaCatalogue: " << Readable(path) << ": " << reason << '\n';
      RunLog::Write(INFO, "Not catalogued: " + Readable(path) + ": " + reason);
      ioCatalogue.AddFailure(path, reason);
    }
    progress.Step();
  }
}

void Report(const char* iWhat, const std::vector<KORUnicodeString>& iLines) {
  std::cout << std::flush;
  for (const KORUnicodeString& line : iLines) {
    std::cerr << "MediaCatalogue: " << iWhat << ": " << Readable(line) << '\n';
    RunLog::Write(INFO, KORUnicodeString(iWhat) + ": " + Readable(line));
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

void Save(Performance& ioPerformance, const Catalogue& iCatalogue, const KORUnicodeString& iFolder,
          const std::filesystem::path& iOut) {
  const Performance::Step step(ioPerformance, "WriteCatalogue");
  const KORUnicodeString path((iOut / kCatalogueName).string().c_str());
  const std::size_t size = WriteAndVerify(ToTree(iCatalogue, iFolder), path);
  std::cout << Say(kWritten, {Readable(path), Number(static_cast<std::int64_t>(size))}) << std::endl;
}

// False where the archive is not what was catalogued.
bool Archive(Performance& ioPerformance, const Catalogue& iCatalogue, const std::filesystem::path& iOut) {
  const Performance::Step step(ioPerformance, "PackFiles");
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

void Measure(Performance& ioPerformance, const Total& iTotal, const std::filesystem::path& iOut) {
  const KORUnicodeString path((iOut / kPerformanceName).string().c_str());
  const std::uint64_t filesPerSecond = ioPerformance.Write(path, iTotal.files, iTotal.bytes);
  std::cout << Say(kMeasured, {Readable(path), Number(static_cast<std::int64_t>(filesPerSecond))}) << std::endl;
}

// Everything between the configuration of the log and its end; the current folder is the one to be catalogued.
int CatalogueHere(const std::filesystem::path& iOut, const std::filesystem::path& iLogFile) {
  Performance performance;
  const KORUnicodeString folder(std::filesystem::current_path().string().c_str());
  std::cout << Say(kCataloguing, {Readable(folder)}) << std::endl;
  RunLog::Write(INFO, "Cataloguing " + Readable(folder));
  const std::vector<KORUnicodeString> files = List(performance, iOut, iLogFile);

  Catalogue catalogue;
  Fill(performance, catalogue, files);
  PrintSummary(std::cout, catalogue);
  Save(performance, catalogue, folder, iOut);
  const bool isArchived = Archive(performance, catalogue, iOut);
  Measure(performance, catalogue.All(), iOut);
  if (!iLogFile.empty()) {
    std::cout << Say(kLogIn, {Readable(iLogFile.string().c_str())}) << std::endl;
  }
  return isArchived ? kDone : kFailed;
}

}  // namespace

int CatalogueFolder(const Arguments& iArguments) {
  const KORUnicodeString problem = ProblemOf(iArguments.folder);
  if (!problem.IsEmpty()) {
    std::cerr << "MediaCatalogue: " << problem << '\n';
    return kMisused;
  }
  const std::filesystem::path out = MakeOut(iArguments.out);
  const RunLog log(iArguments, out);
  try {
    // The walk starts at the current folder: a search path would be split at the separators of a path list, which are
    // legal in a folder's name.
    std::filesystem::current_path(iArguments.folder);
    return CatalogueHere(out, log.File());
  } catch (const std::exception& error) {
    RunLog::Write(INFO, KORUnicodeString("Failed: ") + error.what());
    throw;
  }
}

int VerifyFiles(const Arguments& iArguments) {
  const RunLog log(iArguments, {});
  return VerifyCatalogue(iArguments.catalogue) == 0 ? kDone : kFailed;
}

}  // namespace MediaCatalogue
