#include "VYXInfLoadableContent.h"

#include <gmock/gmock.h>

#include <cstring>
#include <string>
#include <string_view>

#include "support/binaries.h"
#include "support/captured_stdout.h"
#include "support/temporary_folder.h"
#include "support/transfer_doubles.h"

namespace {

using testing::_;
using testing::ElementsAre;
using testing::IsEmpty;
using VYX::Inf::LoadableContent;
using VYX::Test::BytesOf;
using VYX::Test::CapturedStdout;
using VYX::Test::FailureLogIn;
using VYX::Test::FailureReturnIn;
using VYX::Test::MapReceiver;
using VYX::Test::OwnedBinary;
using VYX::Test::RecordingTransmitter;
using VYX::Test::TemporaryFolder;

constexpr const char* kSource = "VYXInfLoadableContent.cpp";

// A location whose path, behind the eight characters that are cut off, is an absolute one.
KORUnicodeString LocationOf(const std::string& iNativePath) {
  return KORUnicodeString(std::string_view("file:///" + iNativePath));
}

std::string LocationIn(const LoadableContent& iContent) {
  RecordingTransmitter transmitter;
  EXPECT_TRUE(iContent.Transfer(transmitter));
  return transmitter.calls.front().substr(std::strlen("string location="));
}

TEST(VYXInfLoadableContent, IsEmptyAtFirst) {
  CapturedStdout captured;
  const LoadableContent content;
  EXPECT_EQ(content.GetType(), "VYX::Inf::LoadableContent");
  EXPECT_EQ(KORUnicodeString(LoadableContent::kType), "VYX::Inf::LoadableContent");
  EXPECT_EQ(content.GetSize(), 0u);
  EXPECT_TRUE(content.GetBinary().IsEmpty());
  EXPECT_THAT(captured.LogLines(), IsEmpty());
}

TEST(VYXInfLoadableContent, AnswersInlineBytesWithoutTheFileSystem) {
  const TemporaryFolder folder;
  const std::string path = folder.MakeFile("x.bin", "from the file");
  constexpr std::string_view kInline("in\0line", 7);
  CapturedStdout captured;
  for (const LoadableContent& content :
       {LoadableContent(OwnedBinary(kInline)), LoadableContent(LocationOf(path), OwnedBinary(kInline)),
        LoadableContent("file:////no/such/file", OwnedBinary(kInline))}) {
    EXPECT_EQ(content.GetSize(), kInline.size());
    EXPECT_EQ(BytesOf(content.GetBinary()), kInline);
  }
  EXPECT_THAT(captured.LogLines(), IsEmpty());
}

TEST(VYXInfLoadableContent, LoadsItsFileOnce) {
  const TemporaryFolder folder;
  const std::string path = folder.MakeFile("x.bin", "first");
  const LoadableContent content(LocationOf(path));
  EXPECT_EQ(content.GetSize(), 5u);
  folder.MakeFile("x.bin", "second");
  EXPECT_EQ(content.GetSize(), 6u) << "asking for the size loads nothing";
  const QB::Binary bytes = content.GetBinary();
  EXPECT_EQ(BytesOf(bytes), "second");
  folder.MakeFile("x.bin", "third one");
  const QB::Binary again = content.GetBinary();
  EXPECT_EQ(BytesOf(again), "second");
  EXPECT_EQ(again.GetData(), bytes.GetData()) << "shared, not copied";
  EXPECT_EQ(content.GetSize(), 6u);
}

TEST(VYXInfLoadableContent, LoadsEmptyFilesAsNothing) {
  const TemporaryFolder folder;
  const LoadableContent content(LocationOf(folder.MakeFile("empty", "")));
  CapturedStdout captured;
  EXPECT_EQ(content.GetSize(), 0u);
  EXPECT_TRUE(content.GetBinary().IsEmpty());
  EXPECT_THAT(captured.LogLines(), IsEmpty());
}

TEST(VYXInfLoadableContent, IgnoresTheLetterCaseOfTheScheme) {
  const TemporaryFolder folder;
  const std::string path = folder.MakeFile("x.bin", "bytes");
  EXPECT_EQ(LoadableContent(KORUnicodeString(std::string_view("FiLe:///" + path))).GetSize(), 5u);
}

TEST(VYXInfLoadableContent, LoadsNoOtherLocations) {
  const TemporaryFolder folder;
  const std::string path = folder.MakeFile("x.bin", "bytes");
  CapturedStdout captured;
  for (const std::string& location :
       {std::string("ftp://h/x"), "file:/" + path, "file:" + path, path, std::string("file:///"),
        std::string("file://host/x"), std::string("file:\\\\\\x"), std::string("fil"), " file:///" + path}) {
    SCOPED_TRACE(location);
    const LoadableContent content{KORUnicodeString(std::string_view(location))};
    EXPECT_EQ(content.GetSize(), 0u);
    EXPECT_TRUE(content.GetBinary().IsEmpty());
  }
  EXPECT_THAT(captured.LogLines(), IsEmpty());
}

TEST(VYXInfLoadableContent, DropsTheSlashBeforeThePath) {
  CapturedStdout captured;
  EXPECT_EQ(LoadableContent("file:///no/such/folder/a%20b.bin").GetSize(), 0u);
  const auto lines = captured.LogLines();
  ASSERT_EQ(lines.size(), 3u);
  EXPECT_THAT(lines[0].text, testing::HasSubstr("'no/such/folder/a%20b.bin'"));
}

TEST(VYXInfLoadableContent, TracesMissingFiles) {
  const TemporaryFolder folder;
  const LoadableContent content(LocationOf(folder.Native("missing")));
  {
    CapturedStdout captured;
    EXPECT_EQ(content.GetSize(), 0u);
    EXPECT_THAT(captured.LogLines(), ElementsAre(_, FailureReturnIn("VYXInfSystemUtil/"), FailureReturnIn(kSource)));
  }
  CapturedStdout captured;
  EXPECT_TRUE(content.GetBinary().IsEmpty());
  const auto lines = captured.LogLines();
  ASSERT_FALSE(lines.empty());
  EXPECT_THAT(lines.back(), FailureLogIn(kSource));
  folder.MakeFile("missing", "came later");
  EXPECT_EQ(BytesOf(content.GetBinary()), "came later");
}

TEST(VYXInfLoadableContent, RefusesFoldersAndZeroBytes) {
  const TemporaryFolder folder;
  folder.MakeFile("a", "bytes");
  for (const std::string& path : {folder.Native(), folder.Native("a") + std::string(1, '\0') + ".bin"}) {
    const LoadableContent content(LocationOf(path));
    CapturedStdout captured;
    EXPECT_TRUE(content.GetBinary().IsEmpty());
    EXPECT_EQ(content.GetSize(), 0u);
    EXPECT_FALSE(captured.LogLines().empty());
  }
}

TEST(VYXInfLoadableContent, TransfersWhatItHolds) {
  const TemporaryFolder folder;
  const KORUnicodeString location = LocationOf(folder.MakeFile("x.bin", "loaded"));
  const LoadableContent content(location);
  const std::string locationCall = "string location=" + location.ConvertToChar();
  RecordingTransmitter before;
  EXPECT_TRUE(content.Transfer(before));
  EXPECT_THAT(before.calls, ElementsAre(locationCall, "binary content=")) << "never loaded";
  EXPECT_EQ(content.GetBinary().GetSize(), 6u);
  RecordingTransmitter after;
  EXPECT_TRUE(content.Transfer(after));
  EXPECT_THAT(after.calls, ElementsAre(locationCall, "binary content=loaded"));
}

TEST(VYXInfLoadableContent, StopsTransferAtTheFirstRefusal) {
  const LoadableContent content("here", OwnedBinary("b"));
  RecordingTransmitter noLocation;
  noLocation.refusedKey = "location";
  RecordingTransmitter noContent;
  noContent.refusedKey = "content";
  CapturedStdout captured;
  EXPECT_FALSE(content.Transfer(noLocation));
  EXPECT_FALSE(content.Transfer(noContent));
  EXPECT_THAT(noLocation.calls, ElementsAre("string location=here"));
  EXPECT_THAT(noContent.calls, ElementsAre("string location=here", "binary content=b"));
  EXPECT_THAT(captured.LogLines(), ElementsAre(FailureReturnIn(kSource), FailureReturnIn(kSource)));
}

TEST(VYXInfLoadableContent, ReceivesBothFields) {
  MapReceiver receiver;
  receiver.strings["location"] = "there";
  receiver.binaries["content"] = OwnedBinary("new");
  LoadableContent content("here", OwnedBinary("old"));
  EXPECT_TRUE(content.Receive(receiver));
  EXPECT_THAT(receiver.reads, ElementsAre("location", "content"));
  EXPECT_EQ(BytesOf(content.GetBinary()), "new");
  EXPECT_EQ(LocationIn(content), "there");
}

TEST(VYXInfLoadableContent, StaysAsItIsWhenAFieldIsMissing) {
  MapReceiver noContent;
  noContent.strings["location"] = "there";
  MapReceiver noLocation;
  noLocation.binaries["content"] = OwnedBinary("new");
  LoadableContent content("here", OwnedBinary("old"));
  CapturedStdout captured;
  EXPECT_FALSE(content.Receive(noContent));
  EXPECT_FALSE(content.Receive(noLocation));
  EXPECT_THAT(captured.LogLines(), ElementsAre(FailureReturnIn(kSource), FailureReturnIn(kSource)));
  EXPECT_EQ(BytesOf(content.GetBinary()), "old");
  EXPECT_EQ(LocationIn(content), "here");
}

TEST(VYXInfLoadableContent, CopiesBothFields) {
  const LoadableContent first("here", OwnedBinary("bytes"));
  LoadableContent second = first;
  EXPECT_EQ(LocationIn(second), "here");
  EXPECT_EQ(BytesOf(second.GetBinary()), "bytes");
  second = LoadableContent();
  EXPECT_EQ(second.GetSize(), 0u);
  second = first;
  EXPECT_EQ(second.GetSize(), 5u);
}

}  // namespace
