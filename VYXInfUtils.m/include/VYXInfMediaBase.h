#pragma once

#include "KORSysTS/KORUnicodeString.h"
#include "VYXExport.h"
#include "VYXITransferable.h"

namespace VYX::Inf {

/**
 * The base of every media item: a transferable object with a name and a description, both empty at first.
 *
 * Fields, in the order of transfer: "mediaName" and "mediaDescription", both texts. Items are made of derived classes
 * and destroyed through those, through ITransferable or through a shared pointer that knows the derived type. No
 * locking: one object is changed by one thread at a time; an unchanging one may be shared.
 */
class VYX_EXPORT MediaBase : public ITransferable {
 public:
  /// The type name of this class.
  static constexpr const char* kType = "VYX::Inf::MediaBase";

  /// Neither name nor description.
  MediaBase() = default;

  /// @{
  /// Copies copy both texts.
  MediaBase(const MediaBase&) = default;
  MediaBase& operator=(const MediaBase&) = default;
  /// @}

 protected:
  ~MediaBase() override;

 public:
  /// kType, unless a derived class answers its own.
  KORUnicodeString GetType() const override;

  /// Writes name and description. False, with a failure trace, at the first that the transmitter refuses; the
  /// description is not attempted when the name fails.
  bool Transfer(ITransmitter& ioTransmitter) const override;

  /// Reads name and description. False, with a failure trace, when either is missing; the object is then unchanged.
  bool Receive(const IReceiver& iReceiver) override;

  /// A copy of the name.
  KORUnicodeString GetName() const { return _name; }

  /// A copy of the description.
  KORUnicodeString GetDescription() const { return _description; }

  /// Replaces the name. Always true.
  bool SetName(const KORUnicodeString& iName);

  /// Replaces the description. Always true.
  bool SetDescription(const KORUnicodeString& iDescription);

 private:
  KORUnicodeString _name;
  KORUnicodeString _description;
};

}  // namespace VYX::Inf
