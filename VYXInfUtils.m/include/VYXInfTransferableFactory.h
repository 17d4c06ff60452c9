#pragma once

#include <functional>
#include <memory>

#include "KORSysTS/KORUnicodeString.h"
#include "VYXExport.h"
#include "VYXITransferable.h"

namespace VYX::Inf {

/**
 * Makes transferable objects from their type names: a process-wide registry of creators.
 *
 * ```cpp
 * using VYX::Inf::MediaContainer;
 * using VYX::Inf::TransferableFactory;
 *
 * TransferableFactory::Register(MediaContainer::kType, [] { return std::make_unique<MediaContainer>(); });
 * TransferableFactory::Create(MediaContainer::kType)->GetType();  // "VYX::Inf::MediaContainer"
 * ```
 *
 * Type names are compared with their letter case. The library registers none of its own classes: register every type
 * that is to be rebuilt, and no other, since the names come from documents that others wrote.
 *
 * The registry may be used before main and while static objects are destroyed. It has no lock, by rule: register at
 * start-up and create afterwards, from any thread, while nobody registers or unregisters. A creator may use the
 * registry, but not remove its own type.
 */
class VYX_EXPORT TransferableFactory {
 public:
  /// Makes one object; an empty pointer tells that it could not.
  using Creator = std::function<std::unique_ptr<ITransferable>()>;

  /// @{
  /// Does nothing: the registry is the process's.
  TransferableFactory& operator=(const TransferableFactory&) = default;
  TransferableFactory& operator=(TransferableFactory&&) = default;
  /// @}

  /**
   * Adds a copy of a creator, which may be empty, to the registry.
   *
   * @return false, with a trace, for an empty type name and for one that is registered already: its creator stays.
   */
  static bool Register(const KORUnicodeString& iType, const Creator& iCreator);

  /// Removes and destroys the creator of a type. False, with a line at WARN, when there is none.
  static bool Unregister(const KORUnicodeString& iType);

  /// Empties the registry.
  static void UnregisterAll();

  /**
   * Makes an object.
   *
   * @return what the creator answers; an empty pointer, with a failure trace, for an unknown type.
   * @throw std::bad_function_call for an empty creator, and what the creator throws.
   */
  static std::unique_ptr<ITransferable> Create(const KORUnicodeString& iType);

  /**
   * Makes an object and lets it read its fields.
   *
   * @return the object; an empty pointer, with a failure trace, when there is none or when it could not read its
   * fields.
   * @throw as the form without a receiver.
   */
  static std::unique_ptr<ITransferable> Create(const KORUnicodeString& iType, const IReceiver& iReceiver);
};

}  // namespace VYX::Inf
