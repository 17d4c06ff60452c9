#pragma once

#include <cstdint>
#include <memory>
#include <set>
#include <vector>

#include "KORSysTS/KORUnicodeString.h"
#include "VYXExport.h"
#include "VYXInfMediaBase.h"

namespace VYX::Inf {

/**
 * A media item that holds other media items, containers among them, in the order in which they were added.
 *
 * ```cpp
 * VYX::Inf::MediaContainer album;
 * album.SetName("Holiday");
 * album.AddMedia(std::make_shared<VYX::Inf::MediaContainer>());
 * album.GetMediaCount();    // 1
 * album.GetContentTypes();  // "VYX::Inf::MediaContainer"
 * ```
 *
 * Items are shared with whoever else holds them and never copied: copies of a container hold the same items. An item is
 * valid when the pointer is not empty and its GetType is not empty. Positions count from 0. Every failure below writes
 * a failure trace and leaves the content unchanged unless stated.
 *
 * Fields, in the order of transfer: "mediaContainerContent", the items; then those of MediaBase. No locking: one object
 * is used by one thread at a time; items are not changed through the container. A container must not come to hold
 * itself: the two would never be destroyed.
 */
class VYX_EXPORT MediaContainer : public MediaBase {
 public:
  /// The type name of this class.
  static constexpr const char* kType = "VYX::Inf::MediaContainer";

  /// No items.
  MediaContainer() = default;
  /// @{
  /// Copies name and description, and shares the items.
  MediaContainer(const MediaContainer&) = default;
  MediaContainer& operator=(const MediaContainer&) = default;
  /// @}
  ~MediaContainer() override;

  /// kType, unless a derived class answers its own.
  KORUnicodeString GetType() const override;

  /// Writes the items, then name and description. False at the first that the transmitter refuses.
  bool Transfer(ITransmitter& ioTransmitter) const override;

  /**
   * Reads the items, then name and description, and replaces the content.
   *
   * @return false when one of them cannot be read, and then nothing is changed; false also when a received object is no
   *         media item or has no type: the content is then replaced all the same, with an empty pointer in the place of
   * an object that is no media item, so that positions are kept.
   */
  bool Receive(const IReceiver& iReceiver) override;

  /// Appends an item. False for an invalid one.
  bool AddMedia(const std::shared_ptr<const MediaBase>& iItem);

  /// Appends items in order. False when any is invalid; none is added then.
  bool AddMedia(const std::vector<std::shared_ptr<const MediaBase>>& iItems);

  /// Replaces the item at a position. False for a position beyond the content and for an invalid item.
  bool SetMedia(std::uint64_t iIndex, const std::shared_ptr<const MediaBase>& iItem);

  /// Removes the item at a position; later ones move up. False for a position beyond the content.
  bool RemoveMedia(std::uint64_t iIndex);

  /// The item at a position; an empty pointer for a position beyond the content.
  std::shared_ptr<const MediaBase> GetMedia(std::uint64_t iIndex) const;

  /// Number of items.
  std::uint64_t GetMediaCount() const noexcept { return _content.size(); }

  /// The items, as a copy of the list that shares them.
  std::vector<std::shared_ptr<const MediaBase>> GetContent() const { return _content; }

  /// The type names that occur among the items. Not to be called while the content holds an empty pointer (see
  /// Receive).
  std::set<KORUnicodeString> GetContentTypes() const;

  /// True when all items, of which there is at least one, have the same type name. The rule of GetContentTypes holds.
  bool IsContentSingleTyped() const;

 private:
  std::vector<std::shared_ptr<const MediaBase>> _content;
};

}  // namespace VYX::Inf
