// What crosses the boundaries between the shared library, a second module and the program: everything is made on one
// side, changed on another and destroyed on a third.

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <utility>

#include "KORSysBase/KORResult.h"
#include "VYXInfLoadableContent.h"
#include "VYXInfMediaContainer.h"
#include "VYXInfUri.h"
#include "VYXPropertyTree.h"
#include "VYXPropertyTreeTransfer.h"
#include "module.h"

namespace {

using VYX::Inf::ITransferable;
using VYX::Inf::MediaContainer;
using VYX::Inf::PropertyTreeReceiver;
using VYX::Inf::PropertyTreeTransmitter;
using VYX::Inf::TransferableFactory;

// A media item that the library does not know.
class Picture final : public VYX::Inf::MediaBase {
 public:
  ~Picture() override = default;
  KORUnicodeString GetType() const override { return "Boundary::Picture"; }
};

TEST(Boundary, ModulesShareOneDefaultLogger) {
  EXPECT_EQ(Module::DefaultLogger(), VYXInfLog::GetDefaultLogger());
}

TEST(Boundary, TextsAndListsGrowOnOneSideAndDieOnTheOther) {
  KORListValKORUnicodeString texts = Module::MakeTexts(1000);
  ASSERT_EQ(texts.Size(), 1000);
  EXPECT_EQ(texts[1000], "1000 is longer than what a text holds inside itself");
  KORUnicodeString text("short");
  KORListValVYXInfError errors;
  Module::Append(text, texts, errors);
  EXPECT_EQ(text, "short and a long text that the module has appended to it");
  EXPECT_EQ(texts[1001], text);
  EXPECT_EQ(errors.Size(), 1);
  texts.RemoveAll();
}

TEST(Boundary, ExceptionsAreCaughtByTheirType) {
  VYXInfUri uri;
  EXPECT_THROW(uri.Set("http://host:x/"), std::invalid_argument);
  try {
    Module::RaiseInLibrary();
    FAIL() << "nothing was raised";
  } catch (const std::out_of_range& error) {
    EXPECT_STREQ(error.what(), "stoul argument out of range");
  }
}

TEST(Boundary, CreatorsOfAllSidesAreFoundOnAll) {
  ASSERT_TRUE(Module::RegisterAlbum("Module::Album"));
  ASSERT_TRUE(TransferableFactory::Register("Boundary::Picture", [] { return std::make_unique<Picture>(); }));
  ASSERT_TRUE(TransferableFactory::Register("Boundary::Broken", []() -> std::unique_ptr<ITransferable> {
    throw std::length_error("raised by the program's creator");
  }));
  const std::unique_ptr<ITransferable> album = TransferableFactory::Create("Module::Album");
  ASSERT_NE(album, nullptr);
  EXPECT_NE(dynamic_cast<MediaContainer*>(album.get()), nullptr);
  const std::unique_ptr<ITransferable> picture = Module::Make("Boundary::Picture");
  ASSERT_NE(picture, nullptr);
  EXPECT_NE(dynamic_cast<Picture*>(picture.get()), nullptr);
  EXPECT_THROW(Module::Make("Boundary::Broken"), std::length_error);
  TransferableFactory::UnregisterAll();
}

TEST(Boundary, MediaOfTheProgramTravelThroughTheLibrary) {
  ASSERT_TRUE(TransferableFactory::Register("Boundary::Picture", [] { return std::make_unique<Picture>(); }));
  ASSERT_TRUE(TransferableFactory::Register("Module::Album", [] { return std::make_unique<MediaContainer>(); }));
  MediaContainer album;
  for (int number = 0; number < 100; ++number) {
    auto picture = std::make_shared<Picture>();
    picture->SetName(KORUnicodeString("picture " + std::to_string(number)));
    ASSERT_TRUE(album.AddMedia(std::shared_ptr<const VYX::Inf::MediaBase>(std::move(picture))));
  }
  VYXPropertyTree document;
  ASSERT_TRUE(PropertyTreeTransmitter::Transmit(album, document));
  ASSERT_GE(document.SetString("$type", "Module::Album"), 0);
  const std::unique_ptr<ITransferable> rebuilt = PropertyTreeReceiver::Rebuild(std::move(document));
  const auto* const container = dynamic_cast<const MediaContainer*>(rebuilt.get());
  ASSERT_NE(container, nullptr);
  const std::shared_ptr<const VYX::Inf::MediaBase> last = container->GetMedia(99);
  ASSERT_NE(last, nullptr);
  EXPECT_NE(dynamic_cast<const Picture*>(last.get()), nullptr);
  EXPECT_EQ(last->GetName(), "picture 99");
  TransferableFactory::UnregisterAll();
}

}  // namespace
