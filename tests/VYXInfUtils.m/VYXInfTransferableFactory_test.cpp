#include "VYXInfTransferableFactory.h"

#include <gmock/gmock.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "VYXInfLog.h"
#include "support/captured_stdout.h"

namespace {

using testing::ElementsAre;
using VYX::Inf::IReceiver;
using VYX::Inf::ITransferable;
using VYX::Inf::ITransmitter;
using VYX::Inf::TransferableFactory;
using VYX::Test::CapturedStdout;
using VYX::Test::ConsoleLevel;
using VYX::Test::Detail;
using VYX::Test::FailureLogIn;
using VYX::Test::FailureReturnIn;
using VYX::Test::Line;

constexpr const char* kSource = "VYXInfTransferableFactory.cpp";

// An object that counts its likes and reads whether a receiver pleases it.
class Sample final : public ITransferable {
 public:
  explicit Sample(int iMark) : _mark(iMark) { ++_alive; }
  Sample(const Sample&) = delete;
  Sample& operator=(const Sample&) = delete;
  ~Sample() override { --_alive; }

  KORUnicodeString GetType() const override { return "T"; }
  bool Transfer(ITransmitter&) const override { return true; }
  bool Receive(const IReceiver& iReceiver) override { return iReceiver.GetBoolean("ok", _isOk) && _isOk; }

  int Mark() const { return _mark; }
  static int Alive() { return _alive; }

 private:
  int _mark;
  bool _isOk = false;
  static inline int _alive = 0;
};

class YesOrNo final : public IReceiver {
 public:
  explicit YesOrNo(bool iAnswer) : _answer(iAnswer) {}
  bool GetTransferables(const KORUnicodeString&, std::vector<std::shared_ptr<ITransferable>>&) const override {
    return false;
  }
  bool GetBoolean(const KORUnicodeString&, bool& oValue) const override {
    oValue = _answer;
    return true;
  }
  bool GetInteger(const KORUnicodeString&, std::int64_t&) const override { return false; }
  bool GetBinary(const KORUnicodeString&, QB::Binary&) const override { return false; }
  bool GetDouble(const KORUnicodeString&, double&) const override { return false; }
  bool GetString(const KORUnicodeString&, KORUnicodeString&) const override { return false; }

 private:
  bool _answer;
};

TransferableFactory::Creator MakerOf(int iMark) {
  return [iMark] { return std::make_unique<Sample>(iMark); };
}

int MarkOf(const std::unique_ptr<ITransferable>& iObject) {
  const auto* const sample = dynamic_cast<const Sample*>(iObject.get());
  return sample == nullptr ? -1 : sample->Mark();
}

class TransferableFactoryTest : public testing::Test {
 protected:
  void SetUp() override {
    CapturedStdout quiet;
    TransferableFactory::UnregisterAll();
  }
  void TearDown() override {
    CapturedStdout quiet;
    TransferableFactory::UnregisterAll();
    EXPECT_EQ(Sample::Alive(), 0);
  }
};

// A static object of another source may register before main.
const bool kIsRegisteredEarly = [] {
  CapturedStdout quiet;
  return TransferableFactory::Register("Early", MakerOf(7));
}();

TEST_F(TransferableFactoryTest, RegistersBeforeMain) {
  EXPECT_TRUE(kIsRegisteredEarly);
}

TEST_F(TransferableFactoryTest, KeepsTheFirstCreatorOfAType) {
  CapturedStdout captured;
  EXPECT_TRUE(TransferableFactory::Register("T", MakerOf(1)));
  EXPECT_FALSE(TransferableFactory::Register("T", MakerOf(2)));
  EXPECT_EQ(MarkOf(TransferableFactory::Create("T")), 1);
  EXPECT_THAT(captured.LogLines(),
              ElementsAre(Line("INFO", "TransferableFactory: Registering type <T>"),
                          Line("INFO", "TransferableFactory: Registering type <T>"), FailureLogIn(kSource),
                          Detail("TransferableFactory: Creator with type <T> already registered")));
}

TEST_F(TransferableFactoryTest, RefusesTheEmptyType) {
  CapturedStdout captured;
  EXPECT_FALSE(TransferableFactory::Register("", MakerOf(1)));
  EXPECT_THAT(captured.LogLines(),
              ElementsAre(Line("INFO", "TransferableFactory: Registering type <>"), FailureReturnIn(kSource)));
}

TEST_F(TransferableFactoryTest, UnregistersWhatIsThere) {
  CapturedStdout captured;
  const auto token = std::make_shared<int>(0);
  EXPECT_TRUE(TransferableFactory::Register("T", [token] { return std::make_unique<Sample>(*token); }));
  EXPECT_EQ(token.use_count(), 2);
  EXPECT_TRUE(TransferableFactory::Unregister("T"));
  EXPECT_EQ(token.use_count(), 1) << "the creator is destroyed";
  EXPECT_FALSE(TransferableFactory::Unregister("T"));
  EXPECT_THAT(captured.LogLines(), ElementsAre(Line("INFO", "TransferableFactory: Registering type <T>"),
                                               Line("INFO", "TransferableFactory: Unregistering type <T>"),
                                               Line("INFO", "TransferableFactory: Unregistering type <T>"),
                                               Line("WARN", "TransferableFactory: Type <T> to unregister not found")));
}

TEST_F(TransferableFactoryTest, UnregistersAll) {
  CapturedStdout captured;
  EXPECT_TRUE(TransferableFactory::Register("A", MakerOf(1)));
  EXPECT_TRUE(TransferableFactory::Register("B", MakerOf(2)));
  TransferableFactory::UnregisterAll();
  EXPECT_EQ(TransferableFactory::Create("A"), nullptr);
  EXPECT_EQ(TransferableFactory::Create("B"), nullptr);
  EXPECT_THAT(captured.LogLines(), ElementsAre(Line("INFO", "TransferableFactory: Registering type <A>"),
                                               Line("INFO", "TransferableFactory: Registering type <B>"),
                                               Line("INFO", "TransferableFactory: Unregister all"),
                                               FailureReturnIn(kSource), FailureReturnIn(kSource)));
  EXPECT_TRUE(TransferableFactory::Register("A", MakerOf(3)));
}

TEST_F(TransferableFactoryTest, ComparesLetterCase) {
  CapturedStdout captured;
  EXPECT_TRUE(TransferableFactory::Register("T", MakerOf(1)));
  EXPECT_EQ(TransferableFactory::Create("t"), nullptr);
  EXPECT_EQ(TransferableFactory::Create(""), nullptr);
  EXPECT_THAT(captured.LogLines(), ElementsAre(Line("INFO", "TransferableFactory: Registering type <T>"),
                                               FailureReturnIn(kSource), FailureReturnIn(kSource)));
}

TEST_F(TransferableFactoryTest, AnswersWhatTheCreatorAnswers) {
  CapturedStdout captured;
  EXPECT_TRUE(TransferableFactory::Register("Null", [] { return std::unique_ptr<ITransferable>(); }));
  EXPECT_TRUE(TransferableFactory::Register("Empty", TransferableFactory::Creator()));
  EXPECT_EQ(TransferableFactory::Create("Null"), nullptr);
  EXPECT_THROW(TransferableFactory::Create("Empty"), std::bad_function_call);
  EXPECT_THROW(TransferableFactory::Create("Empty", YesOrNo(true)), std::bad_function_call);
  EXPECT_EQ(captured.LogLines().size(), 2u) << "no trace";
  EXPECT_EQ(TransferableFactory::Create("Null", YesOrNo(true)), nullptr);
  EXPECT_THAT(captured.LogLines(), ElementsAre(testing::_, testing::_, FailureReturnIn(kSource)));
}

TEST_F(TransferableFactoryTest, LetsObjectsReceive) {
  const ConsoleLevel level(TRACE);
  CapturedStdout captured;
  EXPECT_TRUE(TransferableFactory::Register("T", MakerOf(4)));
  EXPECT_EQ(MarkOf(TransferableFactory::Create("T", YesOrNo(true))), 4);
  EXPECT_THAT(captured.LogLines(),
              ElementsAre(Line("INFO", "TransferableFactory: Registering type <T>"),
                          Line("TRACE", "TransferableFactory: Creating type <T> and initializing with receiver"),
                          Line("TRACE", "TransferableFactory: Creating type <T>")));
}

TEST_F(TransferableFactoryTest, DestroysObjectsThatCannotReceive) {
  EXPECT_TRUE(TransferableFactory::Register("T", MakerOf(4)));
  CapturedStdout captured;
  EXPECT_EQ(TransferableFactory::Create("T", YesOrNo(false)), nullptr);
  EXPECT_EQ(Sample::Alive(), 0);
  EXPECT_THAT(captured.LogLines(), ElementsAre(FailureReturnIn(kSource)));
}

TEST_F(TransferableFactoryTest, TracesUnknownTypesTwiceWithAReceiver) {
  const ConsoleLevel level(TRACE);
  CapturedStdout captured;
  EXPECT_EQ(TransferableFactory::Create("U", YesOrNo(true)), nullptr);
  EXPECT_THAT(captured.LogLines(),
              ElementsAre(Line("TRACE", "TransferableFactory: Creating type <U> and initializing with receiver"),
                          Line("TRACE", "TransferableFactory: Creating type <U>"), FailureReturnIn(kSource),
                          FailureReturnIn(kSource)));
}

TEST_F(TransferableFactoryTest, CreatorsMayUseTheRegistry) {
  CapturedStdout quiet;
  EXPECT_TRUE(TransferableFactory::Register("Outer", [] {
    TransferableFactory::Register("Inner", MakerOf(9));
    return TransferableFactory::Create("Inner");
  }));
  EXPECT_EQ(MarkOf(TransferableFactory::Create("Outer")), 9);
}

TEST_F(TransferableFactoryTest, GrowsToTenThousandTypes) {
  const ConsoleLevel level(ERROR);
  constexpr int kCount = 10000;
  const auto nameOf = [](int iNumber) { return KORUnicodeString(std::string_view("Type" + std::to_string(iNumber))); };
  for (int number = 0; number < kCount; ++number) {
    ASSERT_TRUE(TransferableFactory::Register(nameOf(number), MakerOf(number)));
  }
  for (int number = 0; number < kCount; ++number) {
    ASSERT_EQ(MarkOf(TransferableFactory::Create(nameOf(number))), number);
  }
  for (int number = 0; number < kCount; number += 2) {
    ASSERT_TRUE(TransferableFactory::Unregister(nameOf(number)));
  }
  CapturedStdout quiet;
  EXPECT_EQ(TransferableFactory::Create(nameOf(0)), nullptr);
  EXPECT_EQ(MarkOf(TransferableFactory::Create(nameOf(kCount - 1))), kCount - 1);
}

}  // namespace
