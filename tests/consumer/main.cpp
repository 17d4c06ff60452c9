// Uses each subsystem of the library once, as a program of somebody else would, and prints one line a subsystem. What
// it reads stands in the installed resources, which KORInstallPath names. With an argument it only has itself ended.

#include <chrono>
#include <iostream>
#include <stdexcept>
#include <string_view>
#include <thread>

#include "VYXInfUtils.h"

namespace {

constexpr int kNotEnded = 3;

bool Report(std::string_view iSubsystem, bool iWorks) {
  std::cout << iSubsystem << (iWorks ? " works\n" : " FAILS\n");
  return iWorks;
}

bool UseLog() {
  const KORUnicodeString settings = VYXInfSystemUtil::GetAbsoluteResourcePath("resources\\logging\\settings.ini");
  const bool isOpen = VYXInfLog::InitFromFile(settings);
  VYXInfLog::GetDefaultLogger()->Log(INFO, "a line of the consumer");
  VYXInfLog::Close();
  KORUnicodeString log;
  VYXInfSystemUtil::ReadFile("logs\\main_0.log", log);
  return isOpen && log.ToStringView().find("a line of the consumer") != std::string_view::npos;
}

bool UsePropertyTree() {
  VYXPropertyTree tree;
  return tree.Parse("{\"b\": [1, 2.5], \"a\": \"\\u00e9\"}") >= 0 &&
         VYXPropertyTreeUtils::Stringify(tree) == "{\"a\":\"\xc3\xa9\",\"b\":[1,2.5]}";
}

bool UseCatalogs() {
  const KORUnicodeString text = VYXInfi18n::GetLocalizedString("MediaCatalogue", "Progress", "1", "2");
  return text == "1 of 2 files" || text == "1 fichiers sur 2";
}

// What the library raises has to be known by its type on this side of the interface.
bool UseExceptions() {
  try {
    VYXInfUri uri;
    uri.Set("http://host:port/");
  } catch (const std::invalid_argument& error) {
    return std::string_view(error.what()) == "invalid stoul argument";
  }
  return false;
}

bool UseArchives() {
  KORListValKORUnicodeString files;
  files.Append("zipped.txt");
  VYXCompressionFileHelper helper;
  KORUnicodeString archive;
  KORListValKORUnicodeString entries;
  return VYXInfSystemUtil::SaveToFile("zipped.txt", KORUnicodeString("content"), 0) >= 0 &&
         helper.ZipTmpArchive(files, "archive.zip", archive) >= 0 &&
         VYXInfSystemUtil::BrowseZipArchive(archive, entries) >= 0 && entries.Size() == 1;
}

bool UseMedia() {
  VYXPropertyTree document;
  VYX::Inf::LoadableContent content;
  return VYX::Inf::PropertyTreeTransmitter::Transmit(content, document);
}

// Starts this program once more, which has the helper end it.
bool UseProcesses(const KORUnicodeString& iProgram) {
  KORListValKORUnicodeString arguments;
  arguments.Append("end yourself");
  int child = 0;
  int exitCode = kNotEnded;
  return VYXInfSystemUtil::StartProcess(iProgram, arguments, true, &child, &exitCode) == KORLibSuccess &&
         exitCode != kNotEnded;
}

int EndYourself() {
  VYXInfSystemUtil::KillProcessFromChild(VYXInfSystemUtil::GetPID());
  std::this_thread::sleep_for(std::chrono::seconds(30));
  return kNotEnded;
}

}  // namespace

int main(int iCount, char** iArguments) {
  if (iCount > 1) {
    return EndYourself();
  }
  bool works = Report("the log", UseLog());
  works = Report("the property tree", UsePropertyTree()) && works;
  works = Report("the message catalogs", UseCatalogs()) && works;
  works = Report("what the library raises", UseExceptions()) && works;
  works = Report("the zip archives", UseArchives()) && works;
  works = Report("the media objects", UseMedia()) && works;
  works = Report("the processes", UseProcesses(iArguments[0])) && works;
  return works ? 0 : 1;
}
