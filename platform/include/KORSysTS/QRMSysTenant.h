#pragma once

#include <cstdint>
#include <map>

#include "KORSysTS/KORUnicodeString.h"
#include "VYXExport.h"

/**
 * @file
 * The tenant that the process works for, where it runs as a cloud client.
 *
 * Both come from the surroundings of the process, read anew at every call:
 *
 * - The environment variable QRMSysTenantFile names a JSON file of at most 16 MiB:
 *
 *   ```json
 *   {"cloud": true, "tenant": "R42", "services": {"16": "https://authoring.example.com/r42"}}
 *   ```
 *
 *   "services" maps the decimal number of a service to its address; every member may be missing.
 * - The environment variable QRMSysCloud, where it is set, overrules "cloud": "1" and "true" mean yes, all else no.
 *
 * Without either the process is no cloud client. All of it may be used from any thread while none changes the
 * environment; one record belongs to one thread at a time.
 */

/// The services that a tenant may have an address of. Other numbers may be asked for as well.
enum class MappedServices : std::int32_t {
  DweldAuthoring = 16  ///< the data-preparation authoring service
};

/// What is known of a tenant.
class VYX_EXPORT QRMSysTenantData {
 public:
  /// The tenant's name; empty where the file tells none.
  const KORUnicodeString& GetTenant() const noexcept { return _tenant; }

  /// The address of a service; empty where the tenant has none.
  KORUnicodeString GetMappedService(MappedServices iService) const;

 private:
  friend long QRMSysGetCurrentTenantData(QRMSysTenantData& oData);

  KORUnicodeString _tenant;
  std::map<KORUnicodeString, KORUnicodeString> _services;
};

/**
 * Reads the current tenant's data.
 *
 * @return S_OK; or a negative code with a pending error: 0x80070002 where no file is named, E_FAIL where the file
 * cannot be used. oData is untouched then.
 */
VYX_EXPORT long QRMSysGetCurrentTenantData(QRMSysTenantData& oData);

/// True where the process runs as a cloud client. A file that cannot be used counts as no file, silently.
VYX_EXPORT bool QRMSysIsCloud();
