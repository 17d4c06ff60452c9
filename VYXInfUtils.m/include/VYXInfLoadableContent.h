#pragma once

#include <cstdint>

#include "KORSysTS/KORUnicodeString.h"
#include "Quillbase/Binary.h"
#include "VYXExport.h"
#include "VYXITransferable.h"

namespace VYX::Inf {

/**
 * Bytes that are either held inline or named by a location, a "file" URI from which they are loaded on first use.
 *
 * ```cpp
 * VYXInfSystemUtil::SaveToFile("a.txt", "four", 0);
 * const VYX::Inf::LoadableContent content(KORUnicodeString("file:///a.txt"));
 * content.GetSize();              // 4
 * content.GetBinary().GetSize();  // 4
 * ```
 *
 * GetBinary reads the file once; GetSize does not read it.
 *
 * Only locations that begin with "file:///" (in any letter case) are loaded, and the path is what follows those eight
 * characters: "file:///C:/data/a.bin" names "C:/data/a.bin", and "file:///home/a.bin" names "home/a.bin", without a
 * leading slash. Nothing is percent-decoded. A location that was received names any file that the process may read:
 * whoever loads content that others described decides first whether to trust its location.
 *
 * Fields, in the order of transfer: "location", a text, and "content", the bytes. No locking: GetBinary fills a cache,
 * so that one object must not be read by two threads at once before its content is loaded.
 */
class VYX_EXPORT LoadableContent : public ITransferable {
 public:
  /// The type name of this class.
  static constexpr const char* kType = "VYX::Inf::LoadableContent";

  /// No location, no bytes.
  LoadableContent() = default;

  /// Bytes to be loaded from a location.
  explicit LoadableContent(const KORUnicodeString& iLocation);

  /// Inline bytes, shared with iContent.
  explicit LoadableContent(const QB::Binary& iContent);

  /// Inline bytes together with a location; the location is loaded only when there are no bytes.
  LoadableContent(const KORUnicodeString& iLocation, const QB::Binary& iContent);

  /// @{
  /// Copies share the bytes.
  LoadableContent(const LoadableContent&) = default;
  LoadableContent& operator=(const LoadableContent&) = default;
  /// @}
  ~LoadableContent() override;

  /// kType, unless a derived class answers its own.
  KORUnicodeString GetType() const override;

  /// Writes location and content as they stand: what was never loaded is written empty, and the location carries the
  /// reference. False, with a failure trace, at the first that the transmitter refuses.
  bool Transfer(ITransmitter& ioTransmitter) const override;

  /// Reads location and content. False, with a failure trace, when either is missing; the object is then unchanged.
  bool Receive(const IReceiver& iReceiver) override;

  /// The bytes, shared with the object; they are loaded where there are none yet. A file that cannot be read is written
  /// as a failure log, and the answer is what there is (nothing).
  QB::Binary GetBinary() const;

  /// The number of bytes, without loading them: that of the file where there are none yet. 0 where there is no file to
  /// load, and, with a failure trace, where its size cannot be told.
  std::uint64_t GetSize() const;

 private:
  KORUnicodeString _location;
  mutable QB::Binary _content;
};

}  // namespace VYX::Inf
