#include "KORSysBase/exit_callback.h"

namespace qrm::internal::v1 {

void exit_callback::do_register(Callback iCallback, int, Registrar iRegistrar, Handle& ioHandle) {
  if (!ioHandle) {
    ioHandle._isSet = iRegistrar(iCallback) == 0;
  }
}

}  // namespace qrm::internal::v1
