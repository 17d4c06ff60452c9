#pragma once

#include "VYXExport.h"

/// Of use to the library alone; exported because it is part of the platform types.
namespace qrm::internal::v1 {

/// Callbacks that run when the process ends normally.
class VYX_EXPORT exit_callback {
 public:
  /// What runs when the process ends; it must not throw.
  using Callback = void (*)();

  /// Installs a callback with the run-time's at-exit list and answers 0 on success.
  using Registrar = int (*)(Callback iCallback);

  /// Says whether its callback is registered.
  class Handle {
   public:
    /// True once the callback is registered.
    explicit operator bool() const noexcept { return _isSet; }

   private:
    friend class exit_callback;
    bool _isSet = false;
  };

  /**
   * Registers a callback. A handle that is set already is left as it is, so that one handle registers once; it is not
   * set when the registrar fails.
   *
   * @param iCallback what runs when the process ends; it must not throw.
   * @param iOrder kept for callers that rank their callbacks; the at-exit list runs the newest first.
   * @param iRegistrar installs the callback.
   * @param ioHandle set on success. Not locked: one thread at a time.
   */
  static void do_register(Callback iCallback, int iOrder, Registrar iRegistrar, Handle& ioHandle);
};

}  // namespace qrm::internal::v1
