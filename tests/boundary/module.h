#pragma once

#include <memory>

#include "KORSysBase/KORListValKORUnicodeString.h"
#include "KORSysTS/KORUnicodeString.h"
#include "VYXITransferable.h"
#include "VYXInfError.h"
#include "VYXInfLog.h"
#include "VYXInfTransferableFactory.h"

// A second module that uses the shared library, beside the program of the test.
// The build says how the host spells an export.
namespace Module {

/// The default logger as the module sees it.
VYX_MODULE_EXPORT std::shared_ptr<VYXInfLog> DefaultLogger();

/// A list that the module has made, long enough to have grown.
VYX_MODULE_EXPORT KORListValKORUnicodeString MakeTexts(int iCount);

/// Appends to texts and lists of the caller.
VYX_MODULE_EXPORT void Append(KORUnicodeString& ioText, KORListValKORUnicodeString& ioTexts,
                              KORListValVYXInfError& ioErrors);

/// Puts a creator of the module's own into the factory.
VYX_MODULE_EXPORT bool RegisterAlbum(const char* iType);

/// Makes an object through the factory, whoever registered its creator.
VYX_MODULE_EXPORT std::unique_ptr<VYX::Inf::ITransferable> Make(const char* iType);

/// Lets the library raise its exception for a bad port, through the module.
VYX_MODULE_EXPORT void RaiseInLibrary();

}  // namespace Module
