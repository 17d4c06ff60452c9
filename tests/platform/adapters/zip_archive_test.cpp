#include "platform/adapters/zip_archive.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "platform/adapters/crc32.h"
#include "platform/adapters/deflate.h"

namespace {

using namespace VYX::Adapters;

// An archive in memory, which can be told to fail.
class Memory final : public ByteSource, public ByteSink {
 public:
  std::uint64_t GetSize() const noexcept override { return bytes.size(); }
  bool ReadAt(std::uint64_t iOffset, void* oBuffer, std::size_t iSize) noexcept override {
    if (isBroken || iOffset + iSize > bytes.size()) {
      return false;
    }
    std::copy_n(bytes.data() + iOffset, iSize, static_cast<char*>(oBuffer));
    return true;
  }
  bool WriteAt(std::uint64_t iOffset, const void* iData, std::size_t iSize) noexcept override {
    if (isBroken) {
      return false;
    }
    bytes.resize(std::max(bytes.size(), static_cast<std::size_t>(iOffset + iSize)));
    std::copy_n(static_cast<const char*>(iData), iSize, bytes.data() + iOffset);
    return true;
  }

  std::string bytes;
  bool isBroken = false;
};

enum class Kind { Stream, Packed, Broken };

class Content final : public ZipContent {
 public:
  Content(std::string iText, Kind iKind) : _text(std::move(iText)), _kind(iKind) {}

  bool Open(ZipFigures& oFigures) noexcept override {
    oFigures = {_text.size(), 0, 0, 0};
    if (_kind == Kind::Packed) {
      const std::uint32_t crc = Crc32(0, _text.data(), _text.size());
      const std::size_t size = _text.size();
      const ByteArray packed = Deflater().Deflate(_text.data(), size);
      _text.assign(packed.data.get(), packed.size);
      oFigures = {size, packed.size, crc, 8};
    }
    return true;
  }
  bool Read(char* oBuffer, std::size_t iSize, std::size_t& oRead) noexcept override {
    oRead = _text.copy(oBuffer, iSize, _position);
    _position += oRead;
    return _kind != Kind::Broken;
  }
  void Close() noexcept override {}

 private:
  std::string _text;
  Kind _kind;
  std::size_t _position = 0;
};

bool Write(Memory& oArchive, const std::string& iText, Kind iKind, bool iIsCompressed) {
  ZipWriter writer;
  std::string reason;
  return writer.Open(oArchive, reason) &&
         writer.Add("entry", {0, 0, iIsCompressed}, std::make_unique<Content>(iText, iKind), reason) &&
         writer.Finish(reason);
}

std::string Read(ZipReader& ioReader, std::size_t iPieceSize) {
  std::string text;
  std::size_t count = 1;
  while (count != 0) {
    std::string piece(iPieceSize, '\0');
    EXPECT_EQ(ioReader.ReadEntry(piece.data(), piece.size(), count), ZipFailure::None);
    text.append(piece, 0, count);
  }
  return text;
}

TEST(ZipArchive, ReadsBackWhatItWrote) {
  std::string text;
  for (int line = 0; line < 20'000; ++line) {
    text += std::to_string(line) + "\n";
  }
  for (const auto& [kind, isCompressed] :
       {std::pair(Kind::Stream, true), {Kind::Stream, false}, {Kind::Packed, true}}) {
    Memory archive;
    ASSERT_TRUE(Write(archive, text, kind, isCompressed));
    ZipReader reader;
    std::string reason;
    ASSERT_TRUE(reader.Open(archive, reason)) << reason;
    ASSERT_EQ(reader.GetCount(), 1U);
    ZipFigures figures;
    ASSERT_TRUE(reader.Describe(0, figures));
    EXPECT_EQ(figures.size, text.size());
    EXPECT_EQ(figures.crc, Crc32(0, text.data(), text.size()));
    EXPECT_EQ(figures.method, isCompressed ? 8 : 0);
    ASSERT_TRUE(reader.OpenEntry(0, false));
    EXPECT_EQ(Read(reader, 1000), text);
    ASSERT_TRUE(reader.OpenEntry(0, true));
    const std::string raw = Read(reader, 777);
    EXPECT_EQ(raw.size(), figures.compressedSize);
    std::string inflated(text.size(), '\0');
    EXPECT_EQ(Inflater().Inflate(raw.data(), raw.size(), inflated.data(), inflated.size()), isCompressed);
    EXPECT_FALSE(reader.OpenEntry(1, false));
  }
}

TEST(ZipArchive, PassesFailuresOn) {
  Memory archive;
  archive.isBroken = true;
  EXPECT_FALSE(Write(archive, "text", Kind::Packed, true));
  archive.isBroken = false;
  EXPECT_FALSE(Write(archive, "text", Kind::Broken, true));
  archive.bytes.clear();
  ASSERT_TRUE(Write(archive, "text", Kind::Packed, true));
  ZipReader reader;
  std::string reason;
  ASSERT_TRUE(reader.Open(archive, reason));
  archive.isBroken = true;
  EXPECT_FALSE(reader.OpenEntry(0, false));
  ZipReader other;
  EXPECT_FALSE(other.Open(archive, reason));
  EXPECT_FALSE(reason.empty());
  archive.isBroken = false;
  archive.bytes = "no archive";
  EXPECT_FALSE(other.Open(archive, reason));
}

TEST(Deflate, InflatesToExactlyTheSizeThatIsAskedFor) {
  const std::string text(10'000, 'x');
  const ByteArray packed = Deflater().Deflate(text.data(), text.size());
  Inflater inflater;
  std::string raw(text.size() + 1, '\0');
  EXPECT_TRUE(inflater.Inflate(packed.data.get(), packed.size, raw.data(), text.size()));
  EXPECT_EQ(raw, text + '\0');
  EXPECT_FALSE(inflater.Inflate(packed.data.get(), packed.size, raw.data(), text.size() - 1));
  EXPECT_FALSE(inflater.Inflate(packed.data.get(), packed.size, raw.data(), text.size() + 1));
  EXPECT_FALSE(inflater.Inflate(packed.data.get(), packed.size - 1, raw.data(), text.size()));
  const std::string longer = std::string(packed.data.get(), packed.size) + "junk";
  EXPECT_FALSE(inflater.Inflate(longer.data(), longer.size(), raw.data(), text.size()));
}

}  // namespace
