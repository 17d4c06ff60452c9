#include "VYXInfMediaContainer.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "internal/FailureTrace.h"

namespace VYX::Inf {

namespace {

using Internal::FailureReturn;
using Item = std::shared_ptr<const MediaBase>;

constexpr const char* kContentKey = "mediaContainerContent";

bool IsValid(const Item& iItem) {
  return iItem != nullptr && !iItem->GetType().IsEmpty();
}

}  // namespace

MediaContainer::~MediaContainer() = default;

KORUnicodeString MediaContainer::GetType() const {
  return kType;
}

bool MediaContainer::Transfer(ITransmitter& ioTransmitter) const {
  const std::vector<std::shared_ptr<const ITransferable>> objects(_content.begin(), _content.end());
  if (!ioTransmitter.PutTransferables(kContentKey, objects)) {
    return FailureReturn(VYX_HERE, false);
  }
  if (!MediaBase::Transfer(ioTransmitter)) {
    return FailureReturn(VYX_HERE, false);
  }
  return true;
}

bool MediaContainer::Receive(const IReceiver& iReceiver) {
  std::vector<std::shared_ptr<ITransferable>> objects;
  if (!iReceiver.GetTransferables(kContentKey, objects)) {
    return FailureReturn(VYX_HERE, false);
  }
  std::vector<Item> content;
  content.reserve(objects.size());
  for (const std::shared_ptr<ITransferable>& object : objects) {
    content.push_back(std::dynamic_pointer_cast<const MediaBase>(object));
  }
  if (!MediaBase::Receive(iReceiver)) {
    return FailureReturn(VYX_HERE, false);
  }
  _content = std::move(content);
  if (!std::all_of(_content.begin(), _content.end(), IsValid)) {
    return FailureReturn(VYX_HERE, false);
  }
  return true;
}

bool MediaContainer::AddMedia(const Item& iItem) {
  if (!IsValid(iItem)) {
    return FailureReturn(VYX_HERE, false);
  }
  _content.push_back(iItem);
  return true;
}

bool MediaContainer::AddMedia(const std::vector<Item>& iItems) {
  if (!std::all_of(iItems.begin(), iItems.end(), IsValid)) {
    return FailureReturn(VYX_HERE, false);
  }
  _content.insert(_content.end(), iItems.begin(), iItems.end());
  return true;
}

bool MediaContainer::SetMedia(std::uint64_t iIndex, const Item& iItem) {
  if (iIndex >= _content.size() || !IsValid(iItem)) {
    return FailureReturn(VYX_HERE, false);
  }
  _content[iIndex] = iItem;
  return true;
}

bool MediaContainer::RemoveMedia(std::uint64_t iIndex) {
  if (iIndex >= _content.size()) {
    return FailureReturn(VYX_HERE, false);
  }
  _content.erase(_content.begin() + static_cast<std::ptrdiff_t>(iIndex));
  return true;
}

Item MediaContainer::GetMedia(std::uint64_t iIndex) const {
  if (iIndex >= _content.size()) {
    return FailureReturn(VYX_HERE, Item());
  }
  return _content[iIndex];
}

std::set<KORUnicodeString> MediaContainer::GetContentTypes() const {
  std::set<KORUnicodeString> types;
  for (const Item& item : _content) {
    types.insert(item->GetType());
  }
  return types;
}

bool MediaContainer::IsContentSingleTyped() const {
  return GetContentTypes().size() == 1;
}

}  // namespace VYX::Inf
