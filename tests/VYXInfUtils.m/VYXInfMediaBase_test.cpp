#include "VYXInfMediaBase.h"

#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <type_traits>
#include <utility>

#include "support/captured_stdout.h"
#include "support/transfer_doubles.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using VYX::Inf::MediaBase;
using VYX::Test::CapturedStdout;
using VYX::Test::FailureReturnIn;
using VYX::Test::MapReceiver;
using VYX::Test::RecordingTransmitter;

constexpr const char* kSource = "VYXInfMediaBase.cpp";

class Picture final : public MediaBase {};

Picture Named(const char* iName, const char* iDescription) {
  Picture picture;
  picture.SetName(iName);
  picture.SetDescription(iDescription);
  return picture;
}

static_assert(!std::is_destructible_v<MediaBase>, "destroyed through a derived class only");
static_assert(std::has_virtual_destructor_v<VYX::Inf::ITransferable>);
static_assert(!std::has_virtual_destructor_v<VYX::Inf::ITransmitter>);
static_assert(!std::has_virtual_destructor_v<VYX::Inf::IReceiver>);

TEST(VYXInfMediaBase, KeepsNameAndDescription) {
  CapturedStdout captured;
  Picture picture;
  EXPECT_TRUE(picture.GetName().IsEmpty());
  EXPECT_TRUE(picture.GetDescription().IsEmpty());
  EXPECT_TRUE(picture.SetName("n\xC3\xA4me"));
  EXPECT_TRUE(picture.SetDescription("text"));
  EXPECT_TRUE(picture.SetName("name"));
  EXPECT_EQ(picture.GetName(), "name");
  EXPECT_EQ(picture.GetDescription(), "text");
  EXPECT_TRUE(picture.SetDescription(""));
  EXPECT_TRUE(picture.GetDescription().IsEmpty());
  EXPECT_THAT(captured.LogLines(), IsEmpty());
}

TEST(VYXInfMediaBase, NamesItsType) {
  EXPECT_EQ(Picture().GetType(), "VYX::Inf::MediaBase");
  EXPECT_EQ(KORUnicodeString(MediaBase::kType), "VYX::Inf::MediaBase");
  EXPECT_EQ(KORUnicodeString(VYX::Inf::ITransferable::kType), "VYX::Inf::ITransferable");
}

TEST(VYXInfMediaBase, CopiesBothTexts) {
  Picture first = Named("n", "d");
  Picture second = first;
  first = Named("x", "y");
  EXPECT_EQ(second.GetName(), "n");
  EXPECT_EQ(second.GetDescription(), "d");
  second = first;
  EXPECT_EQ(second.GetName(), "x");
}

TEST(VYXInfMediaBase, TransfersNameThenDescription) {
  RecordingTransmitter transmitter;
  CapturedStdout captured;
  EXPECT_TRUE(Named("n", "d").Transfer(transmitter));
  EXPECT_THAT(transmitter.calls, ElementsAre("string mediaName=n", "string mediaDescription=d"));
  EXPECT_THAT(captured.LogLines(), IsEmpty());
}

TEST(VYXInfMediaBase, StopsTransferAtTheFirstRefusal) {
  const struct {
    const char* refusedKey;
    std::vector<std::string> calls;
  } rows[] = {
      {"mediaName", {"string mediaName=n"}},
      {"mediaDescription", {"string mediaName=n", "string mediaDescription=d"}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.refusedKey);
    RecordingTransmitter transmitter;
    transmitter.refusedKey = row.refusedKey;
    CapturedStdout captured;
    EXPECT_FALSE(Named("n", "d").Transfer(transmitter));
    EXPECT_EQ(transmitter.calls, row.calls);
    EXPECT_THAT(captured.LogLines(), ElementsAre(FailureReturnIn(kSource)));
  }
}

TEST(VYXInfMediaBase, ReceivesNameThenDescription) {
  MapReceiver receiver;
  receiver.strings = {{"mediaName", "n"}, {"mediaDescription", "d"}};
  Picture picture;
  EXPECT_TRUE(picture.Receive(receiver));
  EXPECT_EQ(picture.GetName(), "n");
  EXPECT_EQ(picture.GetDescription(), "d");
  EXPECT_THAT(receiver.reads, ElementsAre("mediaName", "mediaDescription"));
}

TEST(VYXInfMediaBase, StaysAsItIsWhenAFieldIsMissing) {
  for (const char* present : {"mediaName", "mediaDescription"}) {
    SCOPED_TRACE(present);
    MapReceiver receiver;
    receiver.strings = {{present, "new"}};
    Picture picture = Named("old name", "old description");
    CapturedStdout captured;
    EXPECT_FALSE(picture.Receive(receiver));
    EXPECT_EQ(picture.GetName(), "old name");
    EXPECT_EQ(picture.GetDescription(), "old description");
    EXPECT_THAT(captured.LogLines(), ElementsAre(FailureReturnIn(kSource)));
  }
}

TEST(VYXInfMediaBase, IsDestroyedThroughASharedPointer) {
  std::weak_ptr<const MediaBase> watcher;
  {
    const std::shared_ptr<const MediaBase> item = std::make_shared<Picture>();
    watcher = item;
    EXPECT_FALSE(watcher.expired());
  }
  EXPECT_TRUE(watcher.expired());
}

}  // namespace
