#include "VYXPropertyTreeTransfer.h"

#include <gmock/gmock.h>

#include <cmath>
#include <functional>
#include <limits>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "KORSysBase/KORResult.h"
#include "VYXInfLoadableContent.h"
#include "VYXInfLog.h"
#include "VYXInfMediaContainer.h"
#include "VYXInfTransferableFactory.h"
#include "VYXListAccess.h"
#include "support/binaries.h"
#include "support/captured_stdout.h"

namespace {

using testing::AllOf;
using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using VYX::Inf::IReceiver;
using VYX::Inf::ITransferable;
using VYX::Inf::ITransmitter;
using VYX::Inf::LoadableContent;
using VYX::Inf::MediaBase;
using VYX::Inf::MediaContainer;
using VYX::Inf::PropertyTreeReceiver;
using VYX::Inf::PropertyTreeTransmitter;
using VYX::Inf::TransferableFactory;
using VYX::Test::BytesOf;
using VYX::Test::CapturedStdout;
using VYX::Test::ConsoleLevel;
using VYX::Test::Detail;
using VYX::Test::FailureReturnIn;
using VYX::Test::OwnedBinary;

constexpr const char* kSource = "VYXPropertyTreeTransfer.cpp";
constexpr std::size_t kMaxDepth = PropertyTreeTransmitter::kMaxDepth;

KORUnicodeString Text(std::string_view iText) {
  return KORUnicodeString(iText);
}

// A media item that counts its likes.
class Picture final : public MediaBase {
 public:
  static constexpr const char* kType = "Test::Picture";
  Picture() { ++_alive; }
  explicit Picture(const char* iName) : Picture() { SetName(iName); }
  Picture(const Picture&) = delete;
  Picture& operator=(const Picture&) = delete;
  ~Picture() override { --_alive; }
  KORUnicodeString GetType() const override { return kType; }
  static int Alive() { return _alive; }

 private:
  static inline int _alive = 0;
};

// An object with a field of every kind.
class Everything final : public ITransferable {
 public:
  static constexpr const char* kType = "Test::Everything";
  bool boolean = false;
  std::int64_t integer = 0;
  double number = 0;
  QB::Binary binary;
  KORUnicodeString string;

  KORUnicodeString GetType() const override { return kType; }
  bool Transfer(ITransmitter& ioTransmitter) const override {
    return ioTransmitter.PutBoolean("boolean", boolean) && ioTransmitter.PutInteger("integer", integer) &&
           ioTransmitter.PutDouble("number", number) && ioTransmitter.PutBinary("binary", binary) &&
           ioTransmitter.PutString("string", string);
  }
  bool Receive(const IReceiver& iReceiver) override {
    return iReceiver.GetBoolean("boolean", boolean) && iReceiver.GetInteger("integer", integer) &&
           iReceiver.GetDouble("number", number) && iReceiver.GetBinary("binary", binary) &&
           iReceiver.GetString("string", string);
  }
};

// An object whose operations do what a test says.
class Scripted final : public ITransferable {
 public:
  KORUnicodeString type = "Test::Scripted";
  std::function<bool(ITransmitter&)> transfer = [](ITransmitter&) { return true; };

  KORUnicodeString GetType() const override { return type; }
  bool Transfer(ITransmitter& ioTransmitter) const override { return transfer(ioTransmitter); }
  bool Receive(const IReceiver&) override { throw std::runtime_error("cannot receive"); }
};

class TransferTest : public testing::Test {
 protected:
  void SetUp() override {
    const CapturedStdout quiet;
    TransferableFactory::UnregisterAll();
    TransferableFactory::Register(Picture::kType, [] { return std::make_unique<Picture>(); });
    TransferableFactory::Register(Everything::kType, [] { return std::make_unique<Everything>(); });
    TransferableFactory::Register(MediaContainer::kType, [] { return std::make_unique<MediaContainer>(); });
    TransferableFactory::Register(LoadableContent::kType, [] { return std::make_unique<LoadableContent>(); });
    TransferableFactory::Register("Test::Scripted", [] { return std::make_unique<Scripted>(); });
    TransferableFactory::Register("Test::Empty", TransferableFactory::Creator());
    TransferableFactory::Register("Test::Null", [] { return std::unique_ptr<ITransferable>(); });
  }
  void TearDown() override {
    EXPECT_EQ(Picture::Alive(), 0) << "every object is destroyed";
    const CapturedStdout quiet;
    TransferableFactory::UnregisterAll();
  }
};

std::string JsonOf(const VYXPropertyTree& iTree) {
  KORUnicodeString text;
  EXPECT_EQ(iTree.Stringify(text), S_OK);
  return text.ConvertToChar();
}

VYXPropertyTree TreeOf(std::string_view iJson) {
  VYXPropertyTree tree;
  EXPECT_EQ(tree.Parse(Text(iJson)), S_OK) << iJson.substr(0, 200);
  return tree;
}

template <class Type>
std::unique_ptr<Type> Cast(std::unique_ptr<ITransferable> iObject) {
  auto* const object = dynamic_cast<Type*>(iObject.get());
  if (object != nullptr) {
    static_cast<void>(iObject.release());
  }
  return std::unique_ptr<Type>(object);
}

TEST_F(TransferTest, WritesObjectsWithTheirTypes) {
  MediaContainer inner;
  inner.SetName("inner");
  MediaContainer album;
  album.SetName("Holiday");
  album.SetDescription("in \"Norway\"");
  ASSERT_TRUE(album.AddMedia(std::make_shared<Picture>("Fjord")));
  ASSERT_TRUE(album.AddMedia(std::make_shared<MediaContainer>(inner)));
  VYXPropertyTree document;
  document.SetString("old", "gone");
  CapturedStdout captured;
  EXPECT_TRUE(PropertyTreeTransmitter::Transmit(album, document));
  EXPECT_EQ(
      JsonOf(document),
      R"({"$type":"VYX::Inf::MediaContainer","mediaContainerContent":[)"
      R"({"$type":"Test::Picture","mediaDescription":"","mediaName":"Fjord"},)"
      R"({"$type":"VYX::Inf::MediaContainer","mediaContainerContent":[],"mediaDescription":"","mediaName":"inner"}],)"
      R"("mediaDescription":"in \"Norway\"","mediaName":"Holiday"})");
  EXPECT_THAT(captured.LogLines(), IsEmpty());
}

TEST_F(TransferTest, RebuildsNestedContainersFromJsonText) {
  MediaContainer inner;
  ASSERT_TRUE(inner.AddMedia(std::make_shared<Picture>("deep \xE2\x82\xAC")));
  MediaContainer album;
  album.SetName("Holiday");
  const auto shared = std::make_shared<Picture>("twice");
  ASSERT_TRUE(album.AddMedia({shared, std::make_shared<MediaContainer>(inner), shared}));
  VYXPropertyTree document;
  ASSERT_TRUE(PropertyTreeTransmitter::Transmit(album, document));

  CapturedStdout captured;
  const auto rebuilt = Cast<MediaContainer>(PropertyTreeReceiver::Rebuild(TreeOf(JsonOf(document))));
  EXPECT_THAT(captured.LogLines(), IsEmpty());
  ASSERT_NE(rebuilt, nullptr);
  EXPECT_EQ(rebuilt->GetName(), "Holiday");
  ASSERT_EQ(rebuilt->GetMediaCount(), 3u);
  EXPECT_EQ(rebuilt->GetMedia(0)->GetName(), "twice");
  EXPECT_EQ(rebuilt->GetMedia(2)->GetName(), "twice");
  EXPECT_NE(rebuilt->GetMedia(0), rebuilt->GetMedia(2)) << "a shared item is written once in each place";
  const auto nested = std::dynamic_pointer_cast<const MediaContainer>(rebuilt->GetMedia(1));
  ASSERT_NE(nested, nullptr);
  EXPECT_EQ(nested->GetMedia(0)->GetName(), "deep \xE2\x82\xAC");
  VYXPropertyTree again;
  ASSERT_TRUE(PropertyTreeTransmitter::Transmit(*rebuilt, again));
  EXPECT_TRUE(again == document);
}

TEST_F(TransferTest, CarriesEveryKindOfField) {
  struct Row {
    bool boolean;
    std::int64_t integer;
    double number;
    std::string binary;
    std::string string;
  };
  constexpr std::int64_t kExact = std::int64_t{1} << 53;
  std::string allBytes;
  for (int byte = 0; byte < 256; ++byte) {
    allBytes += static_cast<char>(byte);
  }
  const Row rows[] = {
      {false, 0, 0.0, "", ""},
      {true, kExact, 0.1, allBytes, "a\"\\\n\t\x01\xC3\xA4\xF0\x9F\x98\x80"},
      {true, -kExact, std::numeric_limits<double>::max(), "A", std::string("a\0b", 3)},
      {false, -1, std::numeric_limits<double>::denorm_min(), std::string(1 << 20, '\xFF'), std::string(1 << 20, 'x')},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.integer);
    Everything object;
    object.boolean = row.boolean;
    object.integer = row.integer;
    object.number = row.number;
    object.binary = OwnedBinary(row.binary);
    object.string = Text(row.string);
    VYXPropertyTree document;
    ASSERT_TRUE(PropertyTreeTransmitter::Transmit(object, document));
    const auto rebuilt = Cast<Everything>(PropertyTreeReceiver::Rebuild(TreeOf(JsonOf(document))));
    ASSERT_NE(rebuilt, nullptr);
    EXPECT_EQ(rebuilt->boolean, row.boolean);
    EXPECT_EQ(rebuilt->integer, row.integer);
    EXPECT_EQ(rebuilt->number, row.number);
    EXPECT_TRUE(BytesOf(rebuilt->binary) == row.binary);
    EXPECT_TRUE(rebuilt->string == Text(row.string));
  }
}

TEST_F(TransferTest, WritesBytesInBase64) {
  VYXPropertyTree tree;
  PropertyTreeTransmitter transmitter(tree);
  EXPECT_TRUE(LoadableContent("file:///x", OwnedBinary("foob")).Transfer(transmitter));
  EXPECT_EQ(JsonOf(tree), R"({"content":"Zm9vYg==","location":"file:///x"})");
}

TEST_F(TransferTest, ReplacesFieldsAndKeepsOtherMembers) {
  VYXPropertyTree tree;
  tree.SetInteger("kept", 1);
  PropertyTreeTransmitter transmitter(tree);
  EXPECT_TRUE(transmitter.PutTransferables("list", {std::make_shared<Picture>("a"), std::make_shared<Picture>("b")}));
  EXPECT_TRUE(transmitter.PutTransferables("list", {std::make_shared<Picture>("c")}));
  EXPECT_TRUE(transmitter.PutString("text", "a"));
  EXPECT_TRUE(transmitter.PutBoolean("text", true));
  EXPECT_EQ(JsonOf(tree),
            R"({"kept":1,"list":[{"$type":"Test::Picture","mediaDescription":"","mediaName":"c"}],"text":true})");
}

TEST_F(TransferTest, RefusesWhatATreeCannotHold) {
  const auto nameless = std::make_shared<Scripted>();
  nameless->type = "";
  const auto failing = std::make_shared<Scripted>();
  failing->transfer = [](ITransmitter&) { return false; };
  const struct {
    std::function<bool(PropertyTreeTransmitter&)> put;
    const char* detail;
  } rows[] = {
      {[](auto& io) { return io.PutString("$type", "x"); }, "The key '$type' is taken by the type name"},
      {[](auto& io) { return io.PutBoolean("$type", true); }, "The key '$type' is taken by the type name"},
      {[](auto& io) { return io.PutInteger("$type", 1); }, "The key '$type' is taken by the type name"},
      {[](auto& io) { return io.PutDouble("$type", 1); }, "The key '$type' is taken by the type name"},
      {[](auto& io) { return io.PutBinary("$type", QB::Binary()); }, "The key '$type' is taken by the type name"},
      {[](auto& io) { return io.PutTransferables("$type", {}); }, "The key '$type' is taken by the type name"},
      {[](auto& io) { return io.PutString("k", "\xFF"); }, "The text of 'k' is no UTF-8"},
      {[](auto& io) { return io.PutString("k", "\xED\xA0\x80"); }, "The text of 'k' is no UTF-8"},
      {[](auto& io) { return io.PutDouble("k", std::nan("")); }, "The number of 'k' is infinite or none"},
      {[](auto& io) { return io.PutDouble("k", -HUGE_VAL); }, "The number of 'k' is infinite or none"},
      {[](auto& io) { return io.PutInteger("k", 9007199254740993); },
       "The integer 9007199254740993 of 'k' is beyond 2^53"},
      {[](auto& io) { return io.PutInteger("k", std::numeric_limits<std::int64_t>::min()); },
       "The integer -9223372036854775808 of 'k' is beyond 2^53"},
      {[](auto& io) {
         return io.PutTransferables("k", {std::make_shared<Picture>("a"), nullptr});
       },
       "A list holds an empty pointer"},
      {[&](auto& io) {
         return io.PutTransferables("k", {std::make_shared<Picture>("a"), nameless});
       },
       "An object has no type name"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.detail);
    VYXPropertyTree tree;
    tree.SetString("k", "old");
    PropertyTreeTransmitter transmitter(tree);
    CapturedStdout captured;
    EXPECT_FALSE(row.put(transmitter));
    EXPECT_THAT(captured.LogLines(), AllOf(Contains(FailureReturnIn(kSource)), Contains(Detail(row.detail))));
    EXPECT_EQ(JsonOf(tree), R"({"k":"old"})");
  }
  VYXPropertyTree tree;
  PropertyTreeTransmitter transmitter(tree);
  CapturedStdout captured;
  EXPECT_FALSE(transmitter.PutTransferables("k", {failing}));
  EXPECT_THAT(captured.LogLines(), ElementsAre(FailureReturnIn(kSource)));
  EXPECT_EQ(JsonOf(tree), "{}");
}

TEST_F(TransferTest, RefusesBytesBeyond32Bits) {
  char one = 'x';
  const QB::Binary huge(&one, std::uint64_t{1} << 32, nullptr);
  VYXPropertyTree tree;
  PropertyTreeTransmitter transmitter(tree);
  CapturedStdout captured;
  EXPECT_FALSE(transmitter.PutBinary("k", huge));
  EXPECT_THAT(captured.LogLines(), ElementsAre(FailureReturnIn(kSource), Detail("The bytes of 'k' are 4 GiB or more")));
}

TEST_F(TransferTest, LeavesTheDocumentAloneOnFailure) {
  Scripted failing;
  VYXPropertyTree document;
  document.SetString("old", "kept");
  for (const auto& transfer : {std::function<bool(ITransmitter&)>([](ITransmitter& io) {
                                 io.PutBoolean("half", true);
                                 return false;
                               }),
                               std::function<bool(ITransmitter&)>(
                                   [](ITransmitter&) -> bool { throw std::runtime_error("cannot transfer"); })}) {
    failing.transfer = transfer;
    CapturedStdout captured;
    EXPECT_FALSE(PropertyTreeTransmitter::Transmit(failing, document));
    EXPECT_THAT(captured.LogLines(), Contains(FailureReturnIn(kSource)));
    EXPECT_EQ(JsonOf(document), R"({"old":"kept"})");
  }
  failing.type = "";
  CapturedStdout captured;
  EXPECT_FALSE(PropertyTreeTransmitter::Transmit(failing, document));
  EXPECT_THAT(captured.LogLines(), Contains(Detail("An object has no type name")));
}

// Containers inside one another, the outermost counted.
std::shared_ptr<const MediaBase> Nested(std::size_t iDepth) {
  std::shared_ptr<const MediaBase> inner = std::make_shared<MediaContainer>();
  for (std::size_t depth = 1; depth < iDepth; ++depth) {
    auto outer = std::make_shared<MediaContainer>();
    EXPECT_TRUE(outer->AddMedia(inner));
    inner = std::move(outer);
  }
  return inner;
}

std::size_t DepthOf(const MediaBase* iItem) {
  std::size_t depth = 0;
  for (auto* container = dynamic_cast<const MediaContainer*>(iItem); container != nullptr; ++depth) {
    const MediaBase* const inner = container->GetMediaCount() == 0 ? nullptr : container->GetMedia(0).get();
    container = dynamic_cast<const MediaContainer*>(inner);
  }
  return depth;
}

TEST_F(TransferTest, CarriesTheGreatestDepthThroughJsonText) {
  VYXPropertyTree document;
  ASSERT_TRUE(PropertyTreeTransmitter::Transmit(*Nested(kMaxDepth), document));
  const auto rebuilt = Cast<MediaContainer>(PropertyTreeReceiver::Rebuild(TreeOf(JsonOf(document))));
  ASSERT_NE(rebuilt, nullptr);
  EXPECT_EQ(DepthOf(rebuilt.get()), kMaxDepth);
}

TEST_F(TransferTest, RefusesGreaterDepths) {
  VYXPropertyTree document;
  {
    CapturedStdout captured;
    EXPECT_FALSE(PropertyTreeTransmitter::Transmit(*Nested(kMaxDepth + 1), document));
    EXPECT_THAT(captured.LogLines(), Contains(Detail("Objects nest deeper than 256 levels")));
  }
  ASSERT_TRUE(PropertyTreeTransmitter::Transmit(*Nested(kMaxDepth), document));
  VYXPropertyTree outer =
      TreeOf(R"({"$type":"VYX::Inf::MediaContainer","mediaContainerContent":[],"mediaDescription":"","mediaName":""})");
  VYXListAccess content;
  ASSERT_EQ(outer.GetListAccess("mediaContainerContent", content, false), S_OK);
  ASSERT_EQ(content.AddPropertyTree(std::move(document)), S_OK);
  CapturedStdout captured;
  EXPECT_EQ(PropertyTreeReceiver::Rebuild(std::move(outer)), nullptr);
  EXPECT_THAT(captured.LogLines(), Contains(Detail("Objects nest deeper than 256 levels")));
}

TEST_F(TransferTest, RefusesContainersThatHoldThemselves) {
  const auto first = std::make_shared<MediaContainer>();
  const auto second = std::make_shared<MediaContainer>();
  ASSERT_TRUE(first->AddMedia({second, second}));
  ASSERT_TRUE(second->AddMedia({first, first}));
  VYXPropertyTree document;
  CapturedStdout captured;
  EXPECT_FALSE(PropertyTreeTransmitter::Transmit(*first, document));
  EXPECT_THAT(captured.LogLines(), Contains(Detail("Objects nest deeper than 256 levels")));
  EXPECT_EQ(JsonOf(document), "{}");
  ASSERT_TRUE(first->RemoveMedia(0));
  ASSERT_TRUE(first->RemoveMedia(0));
}

TEST_F(TransferTest, CarriesManyItems) {
  const ConsoleLevel level(ERROR);
  constexpr std::size_t kCount = 50000;
  MediaContainer album;
  ASSERT_TRUE(album.AddMedia(std::vector<std::shared_ptr<const MediaBase>>(kCount, std::make_shared<Picture>("p"))));
  VYXPropertyTree document;
  ASSERT_TRUE(PropertyTreeTransmitter::Transmit(album, document));
  const auto rebuilt = Cast<MediaContainer>(PropertyTreeReceiver::Rebuild(std::move(document)));
  ASSERT_NE(rebuilt, nullptr);
  EXPECT_EQ(rebuilt->GetMediaCount(), kCount);
}

std::string Album(const std::string& iContent) {
  return R"({"$type":"VYX::Inf::MediaContainer","mediaDescription":"","mediaName":"","mediaContainerContent":)" +
         iContent + "}";
}

std::string All(const std::string& iChanged, const std::string& iValue) {
  std::string text = R"({"$type":"Test::Everything")";
  for (const auto& [key, value] : {std::pair<std::string, std::string>("boolean", "true"),
                                   {"integer", "1"},
                                   {"number", "1.5"},
                                   {"binary", R"("QQ==")"},
                                   {"string", R"("s")"}}) {
    const std::string& shown = key == iChanged ? iValue : value;
    text += shown.empty() ? "" : ",\"" + key + "\":" + shown;
  }
  return text + "}";
}

constexpr const char* kPicture = R"({"$type":"Test::Picture","mediaDescription":"","mediaName":"p"})";

TEST_F(TransferTest, AcceptsTheDocumentsThatTheHostileOnesAreMadeFrom) {
  EXPECT_NE(PropertyTreeReceiver::Rebuild(TreeOf(All("", ""))), nullptr);
  EXPECT_NE(PropertyTreeReceiver::Rebuild(TreeOf(Album(std::string("[") + kPicture + "]"))), nullptr);
}

TEST_F(TransferTest, RefusesHostileDocuments) {
  const std::string picture = kPicture;
  const std::string rows[] = {
      "{}",
      R"({"$type":1})",
      R"({"$type":null})",
      R"({"$type":["Test::Picture"]})",
      R"({"$type":{"$type":"Test::Picture"}})",
      R"({"$type":""})",
      R"({"$type":"test::picture","mediaDescription":"","mediaName":"p"})",
      R"({"$type":"VYX::Inf::MediaBase","mediaDescription":"","mediaName":"p"})",
      R"({"$type":"Test::Picture"})",
      R"({"$type":"Test::Picture","mediaName":"p"})",
      R"({"$type":"Test::Picture","mediaDescription":"","mediaName":1})",
      R"({"$type":"Test::Picture","mediaDescription":[""],"mediaName":"p"})",
      R"({"$type":"Test::Null"})",
      R"({"$type":"Test::Empty"})",
      R"({"$type":"Test::Scripted"})",
      R"({"$type":"VYX::Inf::MediaContainer","mediaDescription":"","mediaName":""})",
      Album("null"),
      Album("1"),
      Album(R"("[]")"),
      Album("{}"),
      Album(picture),
      Album("[1]"),
      Album("[null]"),
      Album("[true]"),
      Album(R"(["Test::Picture"])"),
      Album("[[]]"),
      Album("[[" + picture + "]]"),
      Album("[{}]"),
      Album("[" + picture + ",{}]"),
      Album("[" + picture + ",1]"),
      Album("[" + picture + "," + R"({"$type":"Unknown"})" + "]"),
      Album("[" + picture + "," + R"({"$type":"Test::Picture"})" + "]"),
      Album("[" + picture + "," + R"({"$type":"Test::Scripted"})" + "]"),
      Album("[" + picture + "," + R"({"$type":"Test::Empty"})" + "]"),
      Album("[" + picture + "," + R"({"$type":"VYX::Inf::LoadableContent","location":"","content":""})" + "]"),
      Album("[" + Album("[" + picture + "," + Album("[{}]") + "]") + "]"),
      All("boolean", ""),
      All("boolean", "1"),
      All("boolean", R"("true")"),
      All("integer", R"("1")"),
      All("integer", "1.5"),
      All("integer", "1e300"),
      All("integer", "9007199254740994"),
      All("number", "true"),
      All("binary", "1"),
      All("binary", R"("QQ=")"),
      All("binary", R"("QQ")"),
      All("binary", R"("QR==")"),
      All("binary", R"(" QQ==")"),
      All("binary", R"("Q-==")"),
      All("binary", R"("====")"),
      All("string", "null"),
      All("string", "{}"),
  };
  for (const std::string& text : rows) {
    SCOPED_TRACE(text);
    VYXPropertyTree document = TreeOf(text);
    CapturedStdout captured;
    EXPECT_EQ(PropertyTreeReceiver::Rebuild(std::move(document)), nullptr);
    EXPECT_EQ(Picture::Alive(), 0) << "nothing half-built stays";
    EXPECT_THAT(captured.LogLines(), Not(IsEmpty()));
  }
}

TEST_F(TransferTest, TellsWhyADocumentIsRefused) {
  const struct {
    const char* text;
    const char* detail;
  } rows[] = {
      {"{}", "Key '$type' not found"},
      {R"({"$type":1})", "bad variant access"},
      {R"({"$type":"Test::Picture","mediaName":""})", "Key 'mediaDescription' not found"},
      {R"({"$type":"Test::Scripted"})", "cannot receive"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.text);
    VYXPropertyTree document = TreeOf(row.text);
    CapturedStdout captured;
    EXPECT_EQ(PropertyTreeReceiver::Rebuild(std::move(document)), nullptr);
    EXPECT_THAT(captured.LogLines(), AllOf(Contains(Detail(row.detail)), Contains(FailureReturnIn(kSource))));
  }
}

TEST_F(TransferTest, LeavesOutputsAloneOnFailure) {
  const PropertyTreeReceiver receiver(TreeOf(R"({"wrong":null,"list":[{}],"text":"?"})"));
  const CapturedStdout quiet;
  for (const char* key : {"missing", "wrong", "list", "text"}) {
    SCOPED_TRACE(key);
    bool boolean = true;
    std::int64_t integer = 2;
    double number = 3;
    QB::Binary binary = OwnedBinary("b");
    KORUnicodeString string = "s";
    std::vector<std::shared_ptr<ITransferable>> objects(1);
    EXPECT_FALSE(receiver.GetBoolean(key, boolean));
    EXPECT_FALSE(receiver.GetInteger(key, integer));
    EXPECT_FALSE(receiver.GetDouble(key, number));
    EXPECT_FALSE(receiver.GetBinary(key, binary));
    EXPECT_EQ(receiver.GetString(key, string), std::string_view(key) == "text");
    EXPECT_FALSE(receiver.GetTransferables(key, objects));
    EXPECT_TRUE(boolean);
    EXPECT_EQ(integer, 2);
    EXPECT_EQ(number, 3);
    EXPECT_EQ(BytesOf(binary), "b");
    EXPECT_EQ(string, std::string_view(key) == "text" ? "?" : "s");
    EXPECT_EQ(objects.size(), 1u);
  }
}

TEST_F(TransferTest, RebuildsThroughTheFactoryWithAReceiver) {
  const PropertyTreeReceiver receiver(TreeOf(R"({"mediaDescription":"d","mediaName":"n","more":1})"));
  const auto object = Cast<Picture>(TransferableFactory::Create(Picture::kType, receiver));
  ASSERT_NE(object, nullptr);
  EXPECT_EQ(object->GetName(), "n");
}

}  // namespace
