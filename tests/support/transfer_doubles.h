#pragma once

#include <map>
#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "VYXITransferable.h"

namespace VYX::Test {

/// A transmitter that records what it is given, as "operation key=value" lines, and refuses one key.
class RecordingTransmitter final : public Inf::ITransmitter {
 public:
  std::string refusedKey;
  std::vector<std::string> calls;
  std::vector<std::shared_ptr<const Inf::ITransferable>> objects;

  bool PutTransferables(const KORUnicodeString& iKey,
                        const std::vector<std::shared_ptr<const Inf::ITransferable>>& iObjects) override {
    objects = iObjects;
    return Record("transferables", iKey, std::to_string(iObjects.size()));
  }
  bool PutBoolean(const KORUnicodeString& iKey, bool iValue) override {
    return Record("boolean", iKey, iValue ? "true" : "false");
  }
  bool PutInteger(const KORUnicodeString& iKey, std::int64_t iValue) override {
    return Record("integer", iKey, std::to_string(iValue));
  }
  bool PutBinary(const KORUnicodeString& iKey, const QB::Binary& iContent) override {
    return Record("binary", iKey,
                  std::string(iContent.IsEmpty() ? "" : iContent.GetData(), static_cast<size_t>(iContent.GetSize())));
  }
  bool PutDouble(const KORUnicodeString& iKey, double iValue) override {
    return Record("double", iKey, std::to_string(iValue));
  }
  bool PutString(const KORUnicodeString& iKey, const KORUnicodeString& iText) override {
    return Record("string", iKey, iText.ConvertToChar());
  }

 private:
  bool Record(const char* iOperation, const KORUnicodeString& iKey, const std::string& iValue) {
    calls.push_back(std::string(iOperation) + " " + iKey.ConvertToChar() + "=" + iValue);
    return iKey != refusedKey.c_str();
  }
};

/// A receiver over values that a test put in; a key without a value of the kind is missing.
class MapReceiver final : public Inf::IReceiver {
 public:
  std::map<KORUnicodeString, KORUnicodeString> strings;
  std::map<KORUnicodeString, QB::Binary> binaries;
  std::map<KORUnicodeString, std::vector<std::shared_ptr<Inf::ITransferable>>> objects;
  mutable std::vector<std::string> reads;

  bool GetTransferables(const KORUnicodeString& iKey,
                        std::vector<std::shared_ptr<Inf::ITransferable>>& oObjects) const override {
    return Read(objects, iKey, oObjects);
  }
  bool GetBoolean(const KORUnicodeString&, bool&) const override { return false; }
  bool GetInteger(const KORUnicodeString&, std::int64_t&) const override { return false; }
  bool GetBinary(const KORUnicodeString& iKey, QB::Binary& oContent) const override {
    return Read(binaries, iKey, oContent);
  }
  bool GetDouble(const KORUnicodeString&, double&) const override { return false; }
  bool GetString(const KORUnicodeString& iKey, KORUnicodeString& oText) const override {
    return Read(strings, iKey, oText);
  }

 private:
  template <class Value>
  bool Read(const std::map<KORUnicodeString, Value>& iValues, const KORUnicodeString& iKey, Value& oValue) const {
    reads.push_back(iKey.ConvertToChar());
    const auto found = iValues.find(iKey);
    if (found == iValues.end()) {
      return false;
    }
    oValue = found->second;
    return true;
  }
};

}  // namespace VYX::Test
