// The C entry points of the job-ticket writer. Property lists go through the
// same guarded reader as files, so a hostile list is refused, not crashed on.
#include "jobticket/jotf_c_api.h"

#include <cstdint>
#include <cstdlib>
#include <new>
#include <span>

#include "core/plist_io.h"
#include "jobticket/jotf_frame.h"

namespace {

int WriteValue(const std::optional<zorva::Value>& root, FILE* out) {
  const zorva::Dictionary* settings = root ? root->dictionary() : nullptr;
  if (!settings) return ZORVA_JOTF_PARAM_ERR;
  zorva::WriteJOTF(out, settings);
  return ZORVA_JOTF_OK;
}

int WriteBytes(const char* bytes, size_t length, FILE* out) {
  const auto* data = reinterpret_cast<const std::uint8_t*>(bytes);
  return WriteValue(zorva::ParsePropertyList(std::span<const std::uint8_t>(data, length)), out);
}

}  // namespace

extern "C" int zorva_jotf_write_xml(const char* plistXml, size_t length, FILE* out) {
  if (!plistXml || !out) return ZORVA_JOTF_PARAM_ERR;
  try {
    return WriteBytes(plistXml, length, out);
  } catch (const std::bad_alloc&) {
    return ZORVA_JOTF_MEM_FULL;
  } catch (...) {
    return ZORVA_JOTF_PARAM_ERR;
  }
}

extern "C" int zorva_jotf_write_plist(plist_t settings, FILE* out) {
  if (!settings || !out || plist_get_node_type(settings) != PLIST_DICT) {
    return ZORVA_JOTF_PARAM_ERR;
  }
  char* xml = nullptr;
  uint32_t length = 0;
  plist_to_xml(settings, &xml, &length);
  if (!xml) return ZORVA_JOTF_MEM_FULL;
  int status = ZORVA_JOTF_PARAM_ERR;
  try {
    status = WriteBytes(xml, length, out);
  } catch (const std::bad_alloc&) {
    status = ZORVA_JOTF_MEM_FULL;
  } catch (...) {
    status = ZORVA_JOTF_PARAM_ERR;
  }
  plist_to_xml_free(xml);
  return status;
}
