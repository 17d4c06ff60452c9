#include "verify.h"

#include <iostream>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "VYXInfMediaContainer.h"
#include "VYXInfSystemUtil.h"
#include "VYXPropertyTree.h"
#include "VYXPropertyTreeTransfer.h"
#include "digest.h"
#include "location.h"
#include "media_items.h"
#include "messages.h"
#include "summary.h"

namespace MediaCatalogue {

namespace {

using VYX::Inf::LoadableContent;
using VYX::Inf::MediaContainer;

struct ListedFile {
  KORUnicodeString path;
  std::shared_ptr<const FileItem> item;
};

[[noreturn]] void Refuse(const KORUnicodeString& iCatalogue, const std::string& iReason) {
  throw UnusableCatalogue("'" + std::string(iCatalogue.ToStringView()) + "' is no catalogue: " + iReason);
}

VYXPropertyTree Load(const KORUnicodeString& iCatalogue) {
  if (!VYXInfSystemUtil::DoesFileExist(iCatalogue)) {
    throw UnusableCatalogue("There is no file '" + std::string(iCatalogue.ToStringView()) + "'");
  }
  KORUnicodeString text;
  if (VYXInfSystemUtil::ReadFile(iCatalogue, text) < 0) {
    throw UnusableCatalogue(TakePendingMessage("The catalogue cannot be read").ConvertToChar());
  }
  VYXPropertyTree tree;
  if (tree.Parse(text) < 0) {
    Refuse(iCatalogue, "it is no JSON object; the trace above tells why");
  }
  return tree;
}

std::shared_ptr<const MediaContainer> Rebuild(const VYXPropertyTree& iTree, const KORUnicodeString& iCatalogue) {
  VYXPropertyTree media;
  if (!iTree.IsPropertyTree("media") || iTree.GetPropertyTree("media", media) < 0) {
    Refuse(iCatalogue, "it has no media");
  }
  std::shared_ptr<VYX::Inf::ITransferable> object = VYX::Inf::PropertyTreeReceiver::Rebuild(std::move(media));
  if (object == nullptr) {
    Refuse(iCatalogue, "its media cannot be rebuilt; the trace above tells why");
  }
  std::shared_ptr<const MediaContainer> container = std::dynamic_pointer_cast<const MediaContainer>(object);
  if (container == nullptr) {
    Refuse(iCatalogue, "its media are no container");
  }
  return container;
}

// Containers nest no deeper than the receiver allows.
void Append(const MediaContainer& iContainer, const KORUnicodeString& iPrefix, std::vector<ListedFile>& ioFiles) {
  for (const auto& media : iContainer.GetContent()) {
    const KORUnicodeString path = iPrefix + media->GetName();
    if (auto item = std::dynamic_pointer_cast<const FileItem>(media)) {
      ioFiles.push_back({path, std::move(item)});
    } else if (const auto* const container = dynamic_cast<const MediaContainer*>(media.get())) {
      Append(*container, path + VYXInfSystemUtil::GetPathSeparator(), ioFiles);
    }
  }
}

void CheckCount(const VYXPropertyTree& iTree, std::size_t iCount, const KORUnicodeString& iCatalogue) {
  VYXPropertyTree totals;
  std::int64_t told = -1;
  if (!iTree.IsPropertyTree("totals") || iTree.GetPropertyTree("totals", totals) < 0 || !totals.IsNumber("files") ||
      totals.GetInteger("files", told) < 0) {
    Refuse(iCatalogue, "it has no totals");
  }
  if (told != static_cast<std::int64_t>(iCount)) {
    Refuse(iCatalogue, "it tells of " + std::to_string(told) + " files, but has media of " + std::to_string(iCount));
  }
}

// Names of files and from catalogues must not control the terminal.
KORUnicodeString Printable(const KORUnicodeString& iText) {
  std::string text(Readable(iText).ToStringView());
  for (char& character : text) {
    if (static_cast<unsigned char>(character) < 0x20 || character == 0x7F) {
      character = '?';
    }
  }
  return KORUnicodeString(text);
}

bool HasDigest(const QB::Binary& iBytes, const KORUnicodeString& iSha256) {
  KORUnicodeString sha256;
  return Sha256Of(iBytes.GetData(), iBytes.GetSize(), sha256) && sha256 == iSha256;
}

// Empty for a file that is as catalogued. What is loaded goes when this returns: the item stays small.
KORUnicodeString DifferenceOf(const FileItem& iItem, const KORUnicodeString& iPath) {
  const KORUnicodeString location = LocationOf(*iItem.Content());
  const KORUnicodeString local = PathIn(location);
  if (local.IsEmpty()) {
    return Say(kNoPlace, {iPath});
  }
  const bool isInline = iItem.Size() > 0 && iItem.Size() <= kInlineLimit;
  if (isInline && !HasDigest(iItem.Content()->GetBinary(), iItem.Sha256())) {
    return Say(kCopyDiffers, {iPath});
  }
  if (!VYXInfSystemUtil::DoesFileExist(local)) {
    return Say(kGone, {iPath});
  }
  const LoadableContent file(location);
  const auto size = static_cast<std::int64_t>(file.GetSize());
  unsigned int ignored = 0;
  if (size == 0 && VYXInfSystemUtil::GetFileSize(local, ignored) < 0) {
    return Say(kNotLoaded, {iPath});
  }
  if (size != iItem.Size()) {
    return Say(kSizeDiffers, {iPath, Number(size), Number(iItem.Size())});
  }
  const QB::Binary bytes = file.GetBinary();
  if (static_cast<std::int64_t>(bytes.GetSize()) != size) {
    return Say(kNotLoaded, {iPath});
  }
  return HasDigest(bytes, iItem.Sha256()) ? KORUnicodeString() : Say(kContentDiffers, {iPath});
}

}  // namespace

std::size_t VerifyCatalogue(const std::filesystem::path& iCatalogue) {
  RegisterMedia();
  const KORUnicodeString path(iCatalogue.string().c_str());
  const VYXPropertyTree tree = Load(path);
  const std::shared_ptr<const MediaContainer> media = Rebuild(tree, path);
  std::vector<ListedFile> files;
  Append(*media, "", files);
  CheckCount(tree, files.size(), path);

  std::cout << Say(kVerifying, {Printable(media->GetName()), Printable(path)}) << std::endl;
  Progress progress(std::cout, files.size());
  std::size_t differences = 0;
  for (const ListedFile& file : files) {
    const KORUnicodeString difference = DifferenceOf(*file.item, Printable(file.path));
    if (!difference.IsEmpty()) {
      std::cout << difference << std::endl;
      ++differences;
    }
    progress.Step();
  }
  const KORUnicodeString count = Number(static_cast<std::int64_t>(files.size()));
  const KORUnicodeString found = Number(static_cast<std::int64_t>(differences));
  std::cout << (differences == 0 ? Say(kUnchanged, {count}) : Say(kDifferences, {found, count})) << std::endl;
  return differences;
}

}  // namespace MediaCatalogue
