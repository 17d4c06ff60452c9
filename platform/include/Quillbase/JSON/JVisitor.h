#pragma once

#include <cstddef>
#include <vector>

#include "Quillbase/JSON/JIStream.h"
#include "Quillbase/StringView.h"
#include "VYXExport.h"

namespace JSON {

/**
 * Receives the members of a JSON object from JIStream::Apply: one call per member, by the form of its value.
 *
 * Every visit answers true to go on and false to end the visits, which makes Apply answer false. Keys, texts and
 * vectors are valid during the visit; a JIStream may be copied and kept. A class that overrides some of the visits
 * names the others by `using JVisitor::Visit;`. JIStream has an example. What a visit throws passes through Apply.
 *
 * A visitor belongs to one thread. The order of the virtual operations is fixed.
 */
class VYX_EXPORT JVisitor {
 public:
  /// @param iSkipsUnhandled what the visits answer that a derived class leaves out: true skips such members, false
  /// stops.
  explicit JVisitor(bool iSkipsUnhandled) noexcept : _skipsUnhandled(iSkipsUnhandled) {}
  virtual ~JVisitor();

  /// Called behind the last member; false makes Apply answer false.
  virtual bool EndOfFile();

  /// A member whose value is null; the base skips it whatever the constructor was told.
  virtual bool VisitNullValue(const QB::StringView& iKey);

  /// An array of numbers.
  virtual bool Visit(const QB::StringView& iKey, const std::vector<double>& iNumbers);
  /// An array of objects.
  virtual bool Visit(const QB::StringView& iKey, const std::vector<JIStream>& iObjects);
  /// An array of truth values.
  virtual bool Visit(const QB::StringView& iKey, const std::vector<bool>& iBooleans);
  /// An array of texts; also the empty array.
  virtual bool Visit(const QB::StringView& iKey, const std::vector<QB::StringView>& iTexts);
  /// A number.
  virtual bool Visit(const QB::StringView& iKey, double iNumber);
  /// An object.
  virtual bool Visit(const QB::StringView& iKey, const JIStream& iObject);
  /// A truth value.
  virtual bool Visit(const QB::StringView& iKey, bool iBoolean);
  /// A text.
  virtual bool Visit(const QB::StringView& iKey, const QB::StringView& iText);

  /// Any other array: of several kinds, of arrays, or with nulls inside; JCursor goes through it. The base refuses it
  /// with a pending error (E_FAIL), whatever the constructor was told.
  virtual bool VisitAny(const QB::StringView& iKey, const JIStream& iArray);

  /// Tells how many members will follow, before the first of them, so that room can be made; the base does nothing.
  virtual void ExpectMembers(std::size_t iCount);

 protected:
  /// @{
  /// For derived classes that are values.
  JVisitor(const JVisitor&) = default;
  JVisitor& operator=(const JVisitor&) = default;
  /// @}

 private:
  bool _skipsUnhandled;
};

}  // namespace JSON
