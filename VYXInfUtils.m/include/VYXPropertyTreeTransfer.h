#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "KORSysTS/KORUnicodeString.h"
#include "Quillbase/Binary.h"
#include "VYXExport.h"
#include "VYXITransferable.h"
#include "VYXPropertyAccess.h"
#include "VYXPropertyTree.h"

/**
 * @file
 * Transferable objects in property trees, and so in JSON text.
 *
 * ```cpp
 * using VYX::Inf::MediaContainer;
 *
 * MediaContainer album;
 * album.SetName("Holiday");
 * VYXPropertyTree document;
 * VYX::Inf::PropertyTreeTransmitter::Transmit(album, document);  // true
 *
 * VYX::Inf::TransferableFactory::Register(MediaContainer::kType, [] { return std::make_unique<MediaContainer>(); });
 * const std::unique_ptr<VYX::Inf::ITransferable> copy = VYX::Inf::PropertyTreeReceiver::Rebuild(document);
 * dynamic_cast<const MediaContainer&>(*copy).GetName();  // "Holiday"
 * ```
 *
 * An object is a JSON object: its type name under the key "$type", and a member for each field. A list of objects is an
 * array of such objects, bytes are a text in Base64 (RFC 4648 section 4, with padding):
 *
 * ```json
 * {"$type":"VYX::Inf::MediaContainer","mediaContainerContent":[{"$type":"Example::Picture","mediaDescription":"",
 *  "mediaName":"Fjord"}],"mediaDescription":"","mediaName":"Holiday"}
 * ```
 *
 * Objects nest up to 256 levels, which is as deep as JSON text can be parsed again; for media containers that takes
 * less than 256 KiB of stack. An object that several lists share is written once in each. Every failure is written to
 * the log, with a trace and its reason.
 */
namespace VYX::Inf {

/**
 * Writes the fields of one object as members of a tree. A field that is refused leaves the tree as it was.
 *
 * Refused are: the key "$type"; a text that is no UTF-8 and a number that is none, which JSON cannot hold; an integer
 * beyond 2^53, which the tree would round; 4 GiB of bytes and more; an empty pointer, an object without type name and
 * one that does not transfer in a list; lists that nest too deeply. One object belongs to one thread at a time.
 */
class VYX_EXPORT PropertyTreeTransmitter final : public ITransmitter {
 public:
  /// Objects inside one another, the outermost counted, in a tree that is written or read.
  static constexpr std::size_t kMaxDepth = 256;

  /// A transmitter into a tree, which must outlive it. Members of other keys stay.
  explicit PropertyTreeTransmitter(VYXPropertyTree& ioTree) noexcept : PropertyTreeTransmitter(ioTree, 1) {}

  /// Writes a whole object with its type name. False when any part of it was refused or raised an exception; oDocument
  /// is untouched then, else it holds nothing but the object.
  static bool Transmit(const ITransferable& iObject, VYXPropertyTree& oDocument);

  /// Writes an array of objects, each with its type name.
  bool PutTransferables(const KORUnicodeString& iKey,
                        const std::vector<std::shared_ptr<const ITransferable>>& iObjects) override;
  /// Writes a Boolean.
  bool PutBoolean(const KORUnicodeString& iKey, bool iValue) override;
  /// Writes a Number.
  bool PutInteger(const KORUnicodeString& iKey, std::int64_t iValue) override;
  /// Writes a String of Base64.
  bool PutBinary(const KORUnicodeString& iKey, const QB::Binary& iContent) override;
  /// Writes a Number.
  bool PutDouble(const KORUnicodeString& iKey, double iValue) override;
  /// Writes a String.
  bool PutString(const KORUnicodeString& iKey, const KORUnicodeString& iText) override;

 private:
  PropertyTreeTransmitter(VYXPropertyTree& ioTree, std::size_t iDepth) noexcept : _tree(&ioTree), _depth(iDepth) {}

  static bool WriteObject(const ITransferable& iObject, std::size_t iDepth, VYXPropertyTree& oTree);

  VYXPropertyTree* _tree;
  std::size_t _depth;
};

/**
 * Reads the fields of one object from a tree. Objects in lists are rebuilt by TransferableFactory from their type
 * names.
 *
 * A document may come from anybody: what is missing, of another kind, no Base64, no whole number, of a type that is not
 * registered or nested too deeply makes the whole reading fail, and objects rebuilt so far are destroyed. One object
 * belongs to one thread at a time.
 */
class VYX_EXPORT PropertyTreeReceiver final : public IReceiver {
 public:
  /// A receiver over a tree that it keeps.
  explicit PropertyTreeReceiver(VYXPropertyTree iDocument);

  PropertyTreeReceiver(const PropertyTreeReceiver&) = delete;
  PropertyTreeReceiver& operator=(const PropertyTreeReceiver&) = delete;

  /// Rebuilds the object that Transmit wrote; an empty pointer when any part of it cannot be read or raised an
  /// exception.
  static std::unique_ptr<ITransferable> Rebuild(VYXPropertyTree iDocument);

  /// Rebuilds an array of objects; what oObjects held is replaced.
  bool GetTransferables(const KORUnicodeString& iKey,
                        std::vector<std::shared_ptr<ITransferable>>& oObjects) const override;
  /// Reads a Boolean.
  bool GetBoolean(const KORUnicodeString& iKey, bool& oValue) const override;
  /// Reads a Number that is whole and at most 2^53 from zero.
  bool GetInteger(const KORUnicodeString& iKey, std::int64_t& oValue) const override;
  /// Decodes a String of strict Base64.
  bool GetBinary(const KORUnicodeString& iKey, QB::Binary& oContent) const override;
  /// Reads a Number.
  bool GetDouble(const KORUnicodeString& iKey, double& oValue) const override;
  /// Reads a String.
  bool GetString(const KORUnicodeString& iKey, KORUnicodeString& oText) const override;

 private:
  PropertyTreeReceiver(const VYXPropertyAccess& iObject, std::size_t iDepth) noexcept
      : _object(iObject), _depth(iDepth) {}

  std::unique_ptr<ITransferable> RebuildObject() const;

  std::unique_ptr<VYXPropertyTree> _document;  // of the outermost receiver; the others look into it
  VYXPropertyAccess _object;
  std::size_t _depth = 1;
};

}  // namespace VYX::Inf
