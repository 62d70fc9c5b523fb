// The dialog-extension interface as the print dialog and the host panel see
// it: the ten-slot operation table every panel and the host hand out, the
// interface object made for the dialog, the plug-in instance with its IUnknown
// table, and the identifiers the factory and QueryInterface compare.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "core/status.h"
#include "core/value.h"

namespace zorva {

class PrintSession;

// A 16-byte UUID, compared byte for byte.
struct UuidBytes {
  std::array<std::uint8_t, 16> bytes{};
  friend bool operator==(const UuidBytes&, const UuidBytes&) = default;
};

// "BDB091F4-E57F-11D3-B5CC-0050E4603277" and the like; malformed text is
// rejected at compile time.
consteval UuidBytes MakeUuid(std::string_view text) {
  constexpr auto nibble = [](char c) -> int {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    throw "bad UUID digit";
  };
  UuidBytes uuid;
  std::size_t at = 0;
  for (std::size_t i = 0; i + 1 < text.size() && at < 16;) {
    if (text[i] == '-') {
      ++i;
      continue;
    }
    uuid.bytes[at++] = static_cast<std::uint8_t>(nibble(text[i]) * 16 + nibble(text[i + 1]));
    i += 2;
  }
  if (at != 16 || text.size() != 36) throw "bad UUID";
  return uuid;
}

// The print dialog's extension type, the plug-in's own factory, IUnknown and
// the dialog-extension interface.
inline constexpr UuidBytes kPDETypeID = MakeUuid("BDB091F4-E57F-11D3-B5CC-0050E4603277");
inline constexpr UuidBytes kZorvaFactoryID = MakeUuid("236F8196-5D59-4E35-B7C4-910F102F7D0B");
inline constexpr UuidBytes kIUnknownID = MakeUuid("00000000-0000-0000-C000-000000000046");
inline constexpr UuidBytes kPDEInterfaceID = MakeUuid("A996FD7E-B738-11D3-8519-0050E4603277");

// QueryInterface's answer for an interface it does not have.
inline constexpr std::int32_t kNoInterface = static_cast<std::int32_t>(0x80000004u);

using PDEContext = void*;
// The pane the host gives a panel: a QWidget in the dialog, opaque here.
using PDEPaneRef = void*;

struct PDEAPIVersion {
  std::uint32_t buildVersionMajor;
  std::uint32_t buildVersionMinor;
  std::uint32_t baseVersionMajor;
  std::uint32_t baseVersionMinor;
};

struct PlugInIntf;

// The ten slots, in the order the dialog calls them by. Panels leave the
// first three empty. Strings handed out by Prologue stay owned by the one
// that made them (valid until its Terminate); takers copy them.
struct PDEInterfaceTable {
  Status (*Retain)(PlugInIntf* object);
  Status (*Release)(PlugInIntf** object);
  Status (*GetAPIVersion)(PlugInIntf* object, PDEAPIVersion* version);
  Status (*Prologue)(PDEContext* context, std::uint32_t* creator, const char** userOptionKind,
                     const char** title, float* maxH, float* maxV);
  Status (*Initialize)(PDEContext context, std::uint32_t* flags, void* ref, PDEPaneRef userPane,
                       PrintSession* session);
  Status (*Sync)(PDEContext context, PrintSession* session, bool reinitializePlugIn);
  Status (*GetSummaryText)(PDEContext context, Array** titles, Array** values);
  Status (*Open)(PDEContext context);
  Status (*Close)(PDEContext context);
  Status (*Terminate)(PDEContext context, Status status);
};

// What the dialog gets from QueryInterface: a table of its own and a count.
struct PlugInIntf {
  PDEInterfaceTable* vtbl;
  std::uint32_t refCount;
};

// What a panel's entry point hands out: one pointer to a table, both made
// with new by the entry point. The host copies the table and frees both
// with FreePanelInterface.
struct PanelInterface {
  PDEInterfaceTable* vtbl;
};
using PanelInterfaceEntry = Status (*)(PanelInterface** out);
void FreePanelInterface(PanelInterface* interface);

// The IUnknown table at the head of a plug-in instance.
struct IUnknownVTbl {
  void* reserved;  // always null
  std::int32_t (*QueryInterface)(void* instance, UuidBytes interfaceID, void** out);
  std::uint32_t (*AddRef)(void* instance);
  std::uint32_t (*Release)(void* instance);
};

// The object the factory returns, laid out as the dialog expects: a pointer
// to the IUnknown table that follows it in the same block.
struct PlugInInstance {
  IUnknownVTbl* vtbl;
  IUnknownVTbl table;
  UuidBytes* factoryID;  // owned
  std::uint32_t refCount;
};

}  // namespace zorva
