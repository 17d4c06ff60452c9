#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "KORSysTS/KORUnicodeString.h"
#include "Quillbase/Binary.h"
#include "VYXExport.h"

/**
 * @file
 * Typed values that write themselves, field by field under string keys, to a transmitter and read themselves back from
 * a receiver. What lies behind the two (a JSON document, a message, a file) is the business of those who implement
 * them; VYXPropertyTreeTransfer.h has a pair over a property tree.
 *
 * ```cpp
 * class Rating final : public VYX::Inf::ITransferable {
 *  public:
 *   static constexpr const char* kType = "Example::Rating";
 *   KORUnicodeString GetType() const override { return kType; }
 *   bool Transfer(VYX::Inf::ITransmitter& ioTransmitter) const override {
 *     return ioTransmitter.PutInteger("stars", _stars);
 *   }
 *   bool Receive(const VYX::Inf::IReceiver& iReceiver) override { return iReceiver.GetInteger("stars", _stars); }
 *
 *  private:
 *   std::int64_t _stars = 0;
 * };
 *
 * Rating rating;
 * VYXPropertyTree document;
 * VYX::Inf::PropertyTreeTransmitter::Transmit(rating, document);  // true
 * std::cout << VYXPropertyTreeUtils::Stringify(document) << "\n";  // {"$type":"Example::Rating","stars":0}
 * ```
 *
 * The order of the operations of the three interfaces is fixed.
 */

/// Media objects and their transfer.
namespace VYX::Inf {

class ITransmitter;
class IReceiver;

/**
 * The base of every transferable class.
 *
 * A concrete class declares its own kType, which holds its fully qualified name, and answers it from GetType.
 * One object is used by one thread at a time.
 */
class VYX_EXPORT ITransferable {
 public:
  /// The type name of this class. A plain text, so that it may be used before main.
  static constexpr const char* kType = "VYX::Inf::ITransferable";

  /// @{
  /// For derived classes.
  ITransferable() = default;
  ITransferable(const ITransferable&) = default;
  ITransferable(ITransferable&&) = default;
  ITransferable& operator=(const ITransferable&) = default;
  ITransferable& operator=(ITransferable&&) = default;
  /// @}
  virtual ~ITransferable();

  /// The type name, under which TransferableFactory makes objects of this class.
  virtual KORUnicodeString GetType() const = 0;

  /// Writes the fields. False when the transmitter refused one; the fields written before it stay written.
  virtual bool Transfer(ITransmitter& ioTransmitter) const = 0;

  /// Reads the fields. False when the receiver lacks one; the object is then unchanged unless its class says otherwise.
  virtual bool Receive(const IReceiver& iReceiver) = 0;
};

/**
 * A sink for named fields. Every operation answers true on success; a key put twice holds what was put last.
 *
 * Never deleted through this interface: implement it in a final class.
 */
class VYX_EXPORT ITransmitter {
 public:
  /// @{
  /// For derived classes.
  ITransmitter() = default;
  ITransmitter(const ITransmitter&) = default;
  ITransmitter(ITransmitter&&) = default;
  ITransmitter& operator=(const ITransmitter&) = default;
  ITransmitter& operator=(ITransmitter&&) = default;
  /// @}

  /// Writes a list of objects, each with its type name, in order.
  virtual bool PutTransferables(const KORUnicodeString& iKey,
                                const std::vector<std::shared_ptr<const ITransferable>>& iObjects) = 0;

  /// Writes a truth value.
  virtual bool PutBoolean(const KORUnicodeString& iKey, bool iValue) = 0;

  /// Writes a whole number; a transport that cannot hold it exactly refuses it.
  virtual bool PutInteger(const KORUnicodeString& iKey, std::int64_t iValue) = 0;

  /// Writes bytes, of which there may be none.
  virtual bool PutBinary(const KORUnicodeString& iKey, const QB::Binary& iContent) = 0;

  /// Writes a number.
  virtual bool PutDouble(const KORUnicodeString& iKey, double iValue) = 0;

  /// Writes a text.
  virtual bool PutString(const KORUnicodeString& iKey, const KORUnicodeString& iText) = 0;

 protected:
  ~ITransmitter() = default;
};

/**
 * A source of named fields, the mirror of ITransmitter. Every operation answers true on success, and false for a
 * missing key or a value of another kind; the output is then untouched.
 *
 * Never deleted through this interface: implement it in a final class.
 */
class VYX_EXPORT IReceiver {
 public:
  /// @{
  /// For derived classes.
  IReceiver() = default;
  IReceiver(const IReceiver&) = default;
  IReceiver(IReceiver&&) = default;
  IReceiver& operator=(const IReceiver&) = default;
  IReceiver& operator=(IReceiver&&) = default;
  /// @}

  /// Reads a list of objects; each is rebuilt from its type name, as by TransferableFactory::Create(type, receiver).
  virtual bool GetTransferables(const KORUnicodeString& iKey,
                                std::vector<std::shared_ptr<ITransferable>>& oObjects) const = 0;

  /// Reads a truth value.
  virtual bool GetBoolean(const KORUnicodeString& iKey, bool& oValue) const = 0;

  /// Reads a whole number.
  virtual bool GetInteger(const KORUnicodeString& iKey, std::int64_t& oValue) const = 0;

  /// Reads bytes.
  virtual bool GetBinary(const KORUnicodeString& iKey, QB::Binary& oContent) const = 0;

  /// Reads a number.
  virtual bool GetDouble(const KORUnicodeString& iKey, double& oValue) const = 0;

  /// Reads a text.
  virtual bool GetString(const KORUnicodeString& iKey, KORUnicodeString& oText) const = 0;

 protected:
  ~IReceiver() = default;
};

}  // namespace VYX::Inf
