#include "media_tree.h"

#include <functional>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

#include "VYXInfMediaContainer.h"
#include "VYXPropertyTreeTransfer.h"
#include "location.h"
#include "media_items.h"

namespace MediaCatalogue {

namespace {

using VYX::Inf::MediaContainer;

constexpr int kMaxFolders = 200;

// The containers by the paths of their folders, "" for the outermost; each path but that ends in a separator.
class Containers {
 public:
  explicit Containers(const std::filesystem::path& iFolder) {
    MediaContainer& root = Add("");
    root.SetName(iFolder.filename().string().c_str());
  }

  MediaContainer& Root() { return *_containers.begin()->second; }

  // The container for a file, and in oName what the file is called in it.
  MediaContainer& For(std::string_view iPath, std::string_view& oName) {
    MediaContainer* container = &Root();
    std::size_t begin = 0;
    for (int depth = 0; depth < kMaxFolders; ++depth) {
      const std::size_t end = iPath.find('\\', begin);
      if (end == std::string_view::npos) {
        break;
      }
      container = &Below(*container, iPath.substr(0, end + 1), iPath.substr(begin, end - begin));
      begin = end + 1;
    }
    oName = iPath.substr(begin);
    return *container;
  }

 private:
  MediaContainer& Below(MediaContainer& ioParent, std::string_view iFolder, std::string_view iName) {
    if (const auto found = _containers.find(iFolder); found != _containers.end()) {
      return *found->second;
    }
    MediaContainer& container = Add(iFolder);
    container.SetName(KORUnicodeString(iName));
    ioParent.AddMedia(_containers.find(iFolder)->second);
    return container;
  }

  MediaContainer& Add(std::string_view iFolder) {
    auto& container = _containers[std::string(iFolder)];
    container = std::make_shared<MediaContainer>();
    container->SetDescription("folder");
    return *container;
  }

  std::map<std::string, std::shared_ptr<MediaContainer>, std::less<>> _containers;
};

}  // namespace

VYXPropertyTree TransferMedia(const std::vector<CataloguedFile>& iFiles, const std::filesystem::path& iFolder) {
  Containers containers(iFolder);
  for (const CataloguedFile& file : iFiles) {
    std::string_view name;
    MediaContainer& container = containers.For(file.path.ToStringView(), name);
    std::shared_ptr<FileItem> item = MakeItem(file.facts.mediaType);
    item->SetFile(KORUnicodeString(name), file.facts, LocationOf(iFolder, file.path));
    container.AddMedia(item);
  }
  VYXPropertyTree document;
  if (!VYX::Inf::PropertyTreeTransmitter::Transmit(containers.Root(), document)) {
    throw std::runtime_error("The media cannot be transferred; the trace above tells why");
  }
  return document;
}

}  // namespace MediaCatalogue
