#include "VYXInfMediaContainer.h"

#include <gmock/gmock.h>

#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "support/captured_stdout.h"
#include "support/transfer_doubles.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using VYX::Inf::ITransferable;
using VYX::Inf::MediaBase;
using VYX::Inf::MediaContainer;
using VYX::Test::CapturedStdout;
using VYX::Test::FailureReturnIn;
using VYX::Test::MapReceiver;
using VYX::Test::RecordingTransmitter;

using Item = std::shared_ptr<const MediaBase>;

constexpr const char* kSource = "VYXInfMediaContainer.cpp";

class Picture final : public MediaBase {};

class Nameless final : public MediaBase {
 public:
  KORUnicodeString GetType() const override { return ""; }
};

class Stranger final : public ITransferable {
 public:
  KORUnicodeString GetType() const override { return "Stranger"; }
  bool Transfer(VYX::Inf::ITransmitter&) const override { return true; }
  bool Receive(const VYX::Inf::IReceiver&) override { return true; }
};

class MediaContainerTest : public testing::Test {
 protected:
  const Item first = std::make_shared<Picture>();
  const Item second = std::make_shared<MediaContainer>();
  const Item nameless = std::make_shared<Nameless>();
  MediaContainer container;
};

void Expect(bool iIsDone, const char* iOperation) {
  EXPECT_TRUE(iIsDone) << iOperation;
}

TEST_F(MediaContainerTest, IsAMediaItem) {
  EXPECT_EQ(container.GetType(), "VYX::Inf::MediaContainer");
  EXPECT_EQ(KORUnicodeString(MediaContainer::kType), "VYX::Inf::MediaContainer");
  EXPECT_EQ(container.GetMediaCount(), 0u);
  EXPECT_THAT(container.GetContent(), IsEmpty());
  EXPECT_TRUE(container.SetName("n"));
  EXPECT_EQ(static_cast<const MediaBase&>(container).GetName(), "n");
}

TEST_F(MediaContainerTest, AddsItemsInOrder) {
  CapturedStdout captured;
  EXPECT_TRUE(container.AddMedia(first));
  EXPECT_TRUE(container.AddMedia(second));
  EXPECT_TRUE(container.AddMedia(first)) << "an item may stand twice";
  EXPECT_THAT(container.GetContent(), ElementsAre(first, second, first));
  EXPECT_TRUE(container.AddMedia(std::vector<Item>{second, first}));
  EXPECT_TRUE(container.AddMedia(std::vector<Item>()));
  EXPECT_THAT(container.GetContent(), ElementsAre(first, second, first, second, first));
  EXPECT_EQ(container.GetMediaCount(), 5u);
  EXPECT_EQ(container.GetMedia(1), second);
  EXPECT_EQ(first.use_count(), 4) << "shared, not copied";
  EXPECT_THAT(captured.LogLines(), IsEmpty());
}

TEST_F(MediaContainerTest, RefusesInvalidItems) {
  Expect(container.AddMedia(first), "AddMedia");
  for (const Item& invalid : {Item(), nameless}) {
    CapturedStdout captured;
    EXPECT_FALSE(container.AddMedia(invalid));
    EXPECT_FALSE(container.AddMedia(std::vector<Item>{first, second, invalid}));
    EXPECT_FALSE(container.SetMedia(0, invalid));
    EXPECT_THAT(container.GetContent(), ElementsAre(first));
    EXPECT_THAT(captured.LogLines(),
                ElementsAre(FailureReturnIn(kSource), FailureReturnIn(kSource), FailureReturnIn(kSource)));
  }
}

TEST_F(MediaContainerTest, ReplacesAndRemovesByPosition) {
  Expect(container.AddMedia({first, first, first}), "AddMedia");
  EXPECT_TRUE(container.SetMedia(1, second));
  EXPECT_THAT(container.GetContent(), ElementsAre(first, second, first));
  EXPECT_TRUE(container.RemoveMedia(0));
  EXPECT_THAT(container.GetContent(), ElementsAre(second, first));
  EXPECT_TRUE(container.RemoveMedia(1));
  EXPECT_TRUE(container.RemoveMedia(0));
  EXPECT_EQ(container.GetMediaCount(), 0u);
}

TEST_F(MediaContainerTest, RefusesPositionsBeyondTheContent) {
  Expect(container.AddMedia({first, second}), "AddMedia");
  for (const std::uint64_t index : {std::uint64_t{2}, std::uint64_t{3}, std::numeric_limits<std::uint64_t>::max()}) {
    SCOPED_TRACE(index);
    CapturedStdout captured;
    EXPECT_FALSE(container.SetMedia(index, first));
    EXPECT_FALSE(container.RemoveMedia(index));
    EXPECT_EQ(container.GetMedia(index), nullptr);
    EXPECT_THAT(container.GetContent(), ElementsAre(first, second));
    EXPECT_THAT(captured.LogLines(),
                ElementsAre(FailureReturnIn(kSource), FailureReturnIn(kSource), FailureReturnIn(kSource)));
  }
}

TEST_F(MediaContainerTest, ListsTheTypesOfItsContent) {
  EXPECT_THAT(container.GetContentTypes(), IsEmpty());
  EXPECT_FALSE(container.IsContentSingleTyped()) << "empty";
  Expect(container.AddMedia({first, first}), "AddMedia");
  EXPECT_TRUE(container.IsContentSingleTyped());
  Expect(container.AddMedia(second), "AddMedia");
  EXPECT_THAT(container.GetContentTypes(),
              ElementsAre(KORUnicodeString("VYX::Inf::MediaBase"), KORUnicodeString("VYX::Inf::MediaContainer")));
  EXPECT_FALSE(container.IsContentSingleTyped());
}

TEST_F(MediaContainerTest, CopiesShareTheItems) {
  Expect(container.AddMedia(first), "AddMedia");
  container.SetName("n");
  MediaContainer copy = container;
  EXPECT_EQ(copy.GetMedia(0), first);
  EXPECT_EQ(copy.GetName(), "n");
  EXPECT_TRUE(copy.RemoveMedia(0));
  EXPECT_EQ(container.GetMediaCount(), 1u);
  copy = container;
  EXPECT_EQ(copy.GetMedia(0), first);
  EXPECT_TRUE(container.SetMedia(0, second));
  EXPECT_EQ(copy.GetMedia(0), first);
}

TEST_F(MediaContainerTest, TransfersTheContentFirst) {
  Expect(container.AddMedia({first, second}), "AddMedia");
  container.SetName("n");
  RecordingTransmitter transmitter;
  EXPECT_TRUE(container.Transfer(transmitter));
  EXPECT_THAT(transmitter.calls,
              ElementsAre("transferables mediaContainerContent=2", "string mediaName=n", "string mediaDescription="));
  EXPECT_THAT(transmitter.objects, ElementsAre(first, second));
}

TEST_F(MediaContainerTest, StopsTransferAtTheFirstRefusal) {
  RecordingTransmitter noContent;
  noContent.refusedKey = "mediaContainerContent";
  {
    CapturedStdout captured;
    EXPECT_FALSE(container.Transfer(noContent));
    EXPECT_THAT(captured.LogLines(), ElementsAre(FailureReturnIn(kSource)));
  }
  EXPECT_THAT(noContent.calls, ElementsAre("transferables mediaContainerContent=0"));

  RecordingTransmitter noName;
  noName.refusedKey = "mediaName";
  CapturedStdout captured;
  EXPECT_FALSE(container.Transfer(noName));
  EXPECT_THAT(captured.LogLines(), ElementsAre(FailureReturnIn("VYXInfMediaBase.cpp"), FailureReturnIn(kSource)));
}

TEST_F(MediaContainerTest, ReceivesAndReplacesTheContent) {
  Expect(container.AddMedia({first, first, first}), "AddMedia");
  const auto item = std::make_shared<MediaContainer>();
  MapReceiver receiver;
  receiver.strings = {{"mediaName", "n"}, {"mediaDescription", "d"}};
  receiver.objects["mediaContainerContent"] = {item};
  CapturedStdout captured;
  EXPECT_TRUE(container.Receive(receiver));
  EXPECT_THAT(container.GetContent(), ElementsAre(item));
  EXPECT_EQ(container.GetName(), "n");
  EXPECT_EQ(item.use_count(), 3) << "the received object itself, shared";
  EXPECT_THAT(receiver.reads, ElementsAre("mediaContainerContent", "mediaName", "mediaDescription"));
  receiver.objects["mediaContainerContent"].clear();
  EXPECT_TRUE(container.Receive(receiver));
  EXPECT_EQ(container.GetMediaCount(), 0u);
  EXPECT_THAT(captured.LogLines(), IsEmpty());
}

TEST_F(MediaContainerTest, StaysAsItIsWhenAFieldIsMissing) {
  Expect(container.AddMedia(first), "AddMedia");
  container.SetName("old");
  MapReceiver receiver;
  receiver.strings = {{"mediaName", "n"}, {"mediaDescription", "d"}};
  {
    CapturedStdout captured;
    EXPECT_FALSE(container.Receive(receiver));
    EXPECT_THAT(captured.LogLines(), ElementsAre(FailureReturnIn(kSource)));
  }
  EXPECT_THAT(receiver.reads, ElementsAre("mediaContainerContent"));
  receiver.objects["mediaContainerContent"] = {std::make_shared<MediaContainer>()};
  receiver.strings.erase("mediaDescription");
  CapturedStdout captured;
  EXPECT_FALSE(container.Receive(receiver));
  EXPECT_THAT(captured.LogLines(), ElementsAre(FailureReturnIn("VYXInfMediaBase.cpp"), FailureReturnIn(kSource)));
  EXPECT_THAT(container.GetContent(), ElementsAre(first));
  EXPECT_EQ(container.GetName(), "old");
}

TEST_F(MediaContainerTest, KeepsThePlacesOfObjectsThatAreNoMedia) {
  Expect(container.AddMedia(first), "AddMedia");
  const auto item = std::make_shared<MediaContainer>();
  MapReceiver receiver;
  receiver.strings = {{"mediaName", "n"}, {"mediaDescription", "d"}};
  receiver.objects["mediaContainerContent"] = {item, std::make_shared<Stranger>(), nullptr, item};
  CapturedStdout captured;
  EXPECT_FALSE(container.Receive(receiver));
  EXPECT_THAT(container.GetContent(), ElementsAre(item, nullptr, nullptr, item));
  EXPECT_EQ(container.GetName(), "n");
  EXPECT_THAT(captured.LogLines(), ElementsAre(FailureReturnIn(kSource))) << "once, at the first";
}

TEST_F(MediaContainerTest, RefusesReceivedMediaWithoutType) {
  MapReceiver receiver;
  receiver.strings = {{"mediaName", "n"}, {"mediaDescription", "d"}};
  receiver.objects["mediaContainerContent"] = {std::make_shared<Nameless>()};
  CapturedStdout captured;
  EXPECT_FALSE(container.Receive(receiver));
  EXPECT_EQ(container.GetMediaCount(), 1u);
  EXPECT_THAT(captured.LogLines(), ElementsAre(FailureReturnIn(kSource)));
}

}  // namespace
