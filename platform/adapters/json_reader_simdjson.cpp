#include <simdjson.h>

#include <algorithm>
#include <bit>
#include <cstring>
#include <mutex>
#include <new>
#include <utility>
#include <vector>

#include "platform/adapters/json_diagnosis.h"
#include "platform/adapters/json_reader.h"

namespace VYX::Adapters {

namespace {

using simdjson::dom::document;
using simdjson::internal::tape_ref;
using simdjson::internal::tape_type;

// simdjson counts a depth of N when N - 1 levels hold something, so that this many refuses the 512th of them: a text
// that reaches the limit is measured by the strict reading, which also counts an empty innermost level.
constexpr std::size_t kFastDepth = kJsonMaxDepth;
constexpr std::size_t kFullDepth = kJsonMaxDepth + 1;

// Memory for texts up to this size is kept for the next document.
constexpr std::size_t kLargestKept = std::size_t{1} << 20;
constexpr std::size_t kMostKept = 8;
constexpr std::size_t kSmallest = 4096;

// Counts above this saturate in the tape.
constexpr std::size_t kCountLimit = 0xFFFFFF;

constexpr std::size_t kRootPlace = 1;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

tape_ref Ref(const void* iTape, std::size_t iPlace) {
  return {static_cast<const document*>(iTape), iPlace};
}

std::string_view FailureText(simdjson::error_code iError) {
  return iError == simdjson::CAPACITY ? "the text is larger than 4 GiB" : simdjson::error_message(iError);
}

JsonFailure FailureAt(std::string_view iText, std::size_t iOffset, std::size_t iMark, std::string_view iReason) {
  const std::string_view before = iText.substr(0, iOffset);
  const std::size_t lineFeed = before.rfind('\n');
  const std::string_view line = before.substr(lineFeed == std::string_view::npos ? 0 : lineFeed + 1);
  const auto startsCharacter = [](char iByte) { return (static_cast<unsigned char>(iByte) & 0xC0U) != 0x80U; };
  return {static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n')) + 1,
          static_cast<std::size_t>(std::count_if(line.begin(), line.end(), startsCharacter)) + 1, iOffset + iMark,
          std::string(iReason)};
}

}  // namespace

// What a parse needs: the reader with its indexes, a copy of the text with readable bytes behind it, and the tape.
struct JsonDocument::Memory {
  std::size_t Capacity() const noexcept { return tape.capacity(); }

  simdjson::error_code Parse(std::string_view iText, std::size_t iDepth) {
    if (iText.size() > simdjson::SIMDJSON_MAXSIZE_BYTES) {
      return simdjson::CAPACITY;
    }
    if (Grow(iText.size(), iDepth) == simdjson::MEMALLOC) {
      throw std::bad_alloc();
    }
    iText.copy(text.get(), iText.size());
    std::memset(text.get() + iText.size(), 0, simdjson::SIMDJSON_PADDING);
    return reader.parse_into_document(tape, text.get(), iText.size(), false).error();
  }

  // Only the tape is needed while a document lives.
  void DropLargeWorkspace() noexcept {
    if (Capacity() > kLargestKept) {
      reader = simdjson::dom::parser();
      text.reset();
    }
  }

  document tape;

 private:
  simdjson::error_code Grow(std::size_t iSize, std::size_t iDepth) {
    const std::size_t capacity =
        iSize > kLargestKept ? iSize : std::max(kSmallest, std::bit_ceil(std::max<std::size_t>(iSize, 1)));
    if (text == nullptr || Capacity() < capacity) {
      text.reset(new char[capacity + simdjson::SIMDJSON_PADDING]);
      if (const auto error = tape.allocate(capacity); error != simdjson::SUCCESS) {
        return error;
      }
    }
    if (reader.capacity() < Capacity() || reader.max_depth() != iDepth) {
      return reader.allocate(Capacity(), iDepth);
    }
    return simdjson::SUCCESS;
  }

  simdjson::dom::parser reader;
  std::unique_ptr<char[]> text;
};

// Memory of documents that have died. The pool itself is never destroyed: documents may die after static objects.
class JsonDocument::Pool {
 public:
  static Pool& Instance() {
    static Pool* const pool = new Pool;
    return *pool;
  }

  std::unique_ptr<Memory, ReturnToPool> Take() {
    {
      const std::lock_guard lock(_mutex);
      if (!_idle.empty()) {
        std::unique_ptr<Memory, ReturnToPool> memory(_idle.back().release());
        _idle.pop_back();
        return memory;
      }
    }
    return std::unique_ptr<Memory, ReturnToPool>(new Memory);
  }

  void Return(std::unique_ptr<Memory> iMemory) noexcept {
    if (iMemory->Capacity() > kLargestKept) {
      return;
    }
    const std::lock_guard lock(_mutex);
    if (_idle.size() < kMostKept) {
      _idle.push_back(std::move(iMemory));
    }
  }

 private:
  Pool() { _idle.reserve(kMostKept); }

  std::mutex _mutex;
  std::vector<std::unique_ptr<Memory>> _idle;
};

void JsonDocument::ReturnToPool::operator()(Memory* iMemory) const noexcept {
  Pool::Instance().Return(std::unique_ptr<Memory>(iMemory));
}

JsonDocument::JsonDocument() noexcept = default;
JsonDocument::JsonDocument(JsonDocument&& ioOther) noexcept = default;
JsonDocument& JsonDocument::operator=(JsonDocument&& ioOther) noexcept = default;
JsonDocument::~JsonDocument() = default;

bool JsonDocument::Parse(std::string_view iText, JsonFailure& oFailure) {
  const std::size_t mark = iText.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0;
  const std::string_view text = iText.substr(mark);
  _memory.reset();
  auto memory = Pool::Instance().Take();
  auto error = memory->Parse(text, kFastDepth);
  const bool needsDiagnosis = error != simdjson::CAPACITY && (error != simdjson::SUCCESS || MayHoldNegativeZero(text));
  if (needsDiagnosis) {
    const JsonDiagnosis diagnosis = DiagnoseJson(text);
    if (!diagnosis.isWellFormed) {
      oFailure = FailureAt(text, diagnosis.offset, mark, diagnosis.reason);
      return false;
    }
    if (error != simdjson::SUCCESS || diagnosis.isRewritten) {
      error = memory->Parse(diagnosis.isRewritten ? std::string_view(diagnosis.rewritten) : text, kFullDepth);
    }
  }
  if (error != simdjson::SUCCESS) {
    oFailure = FailureAt(text, 0, mark, FailureText(error));
    return false;
  }
  memory->DropLargeWorkspace();
  _memory = std::move(memory);
  return true;
}

JsonNode JsonDocument::Root() const noexcept {
  return At(kRootPlace);
}

JsonNode JsonDocument::At(std::size_t iPlace) const noexcept {
  return _memory == nullptr ? JsonNode() : JsonNode(&_memory->tape, iPlace);
}

JsonKind JsonNode::Kind() const noexcept {
  if (_tape == nullptr) {
    return JsonKind::Null;
  }
  switch (Ref(_tape, _place).tape_ref_type()) {
    case tape_type::START_ARRAY:
      return JsonKind::Array;
    case tape_type::START_OBJECT:
      return JsonKind::Object;
    case tape_type::STRING:
      return JsonKind::String;
    case tape_type::INT64:
    case tape_type::UINT64:
    case tape_type::DOUBLE:
      return JsonKind::Number;
    case tape_type::TRUE_VALUE:
    case tape_type::FALSE_VALUE:
      return JsonKind::Boolean;
    default:
      return JsonKind::Null;
  }
}

bool JsonNode::Boolean() const noexcept {
  return _tape != nullptr && Ref(_tape, _place).is_true();
}

double JsonNode::Number() const noexcept {
  if (Kind() != JsonKind::Number) {
    return 0;
  }
  const tape_ref ref = Ref(_tape, _place);
  switch (ref.tape_ref_type()) {
    case tape_type::INT64:
      return static_cast<double>(ref.next_tape_value<std::int64_t>());
    case tape_type::UINT64:
      return static_cast<double>(ref.next_tape_value<std::uint64_t>());
    default:
      return ref.next_tape_value<double>();
  }
}

bool JsonNode::Unsigned(std::uint64_t& oNumber) const noexcept {
  if (_tape == nullptr) {
    return false;
  }
  const tape_ref ref = Ref(_tape, _place);
  const bool isUnsigned = ref.is_uint64() || (ref.is_int64() && ref.next_tape_value<std::int64_t>() >= 0);
  if (isUnsigned) {
    oNumber = ref.next_tape_value<std::uint64_t>();
  }
  return isUnsigned;
}

bool JsonNode::Signed(std::int64_t& oNumber) const noexcept {
  if (_tape == nullptr || !Ref(_tape, _place).is_int64()) {
    return false;
  }
  oNumber = Ref(_tape, _place).next_tape_value<std::int64_t>();
  return true;
}

std::string_view JsonNode::Text() const noexcept {
  return Kind() == JsonKind::String ? Ref(_tape, _place).get_string_view() : std::string_view("", 0);
}

std::size_t JsonNode::Count() const noexcept {
  const JsonKind kind = Kind();
  if (kind != JsonKind::Array && kind != JsonKind::Object) {
    return 0;
  }
  const std::size_t count = Ref(_tape, _place).scope_count();
  if (count < kCountLimit) {
    return count;
  }
  std::size_t walked = 0;
  for (JsonWalk walk(*this); walk.Next();) {
    ++walked;
  }
  return walked;
}

JsonWalk::JsonWalk(JsonNode iParent) noexcept {
  const JsonKind kind = iParent.Kind();
  if (kind == JsonKind::Array || kind == JsonKind::Object) {
    _value = iParent;
    _hasKeys = kind == JsonKind::Object;
    _next = iParent._place + 1;
    _end = Ref(iParent._tape, iParent._place).after_element() - 1;
  }
}

bool JsonWalk::Next() noexcept {
  if (_next == _end) {
    return false;
  }
  if (_hasKeys) {
    _key = Ref(_value._tape, _next++).get_string_view();
  }
  _value._place = _next;
  _next = Ref(_value._tape, _next).after_element();
  return true;
}

}  // namespace VYX::Adapters
