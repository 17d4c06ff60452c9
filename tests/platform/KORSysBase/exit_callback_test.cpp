#include "KORSysBase/exit_callback.h"

#include <gtest/gtest.h>

namespace {

using qrm::internal::v1::exit_callback;

int registrations = 0;
exit_callback::Callback registered = nullptr;

void Callback() {}

int Accept(exit_callback::Callback iCallback) {
  ++registrations;
  registered = iCallback;
  return 0;
}

int Refuse(exit_callback::Callback) {
  ++registrations;
  return 1;
}

TEST(ExitCallback, OneHandleRegistersOnce) {
  registrations = 0;
  exit_callback::Handle handle;
  EXPECT_FALSE(handle);
  exit_callback::do_register(&Callback, 0, &Accept, handle);
  EXPECT_TRUE(handle);
  EXPECT_EQ(registered, &Callback);
  exit_callback::do_register(&Callback, 0, &Accept, handle);
  EXPECT_EQ(registrations, 1);
}

TEST(ExitCallback, ARefusedRegistrationMayBeTriedAgain) {
  registrations = 0;
  exit_callback::Handle handle;
  exit_callback::do_register(&Callback, 0, &Refuse, handle);
  EXPECT_FALSE(handle);
  exit_callback::do_register(&Callback, 0, &Accept, handle);
  EXPECT_TRUE(handle);
  EXPECT_EQ(registrations, 2);
}

}  // namespace
