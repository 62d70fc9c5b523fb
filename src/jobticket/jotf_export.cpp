// The export command and the host items it relies on. The client's user,
// computer name and address are what the controller shows the operator for
// the job; on this platform they come from the account running us, the
// machine's pretty host name and the interface carrying the default route.
#include "jobticket/jotf_export.h"

#include <arpa/inet.h>
#include <ifaddrs.h>
#include <pwd.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <memory>
#include <optional>
#include <sstream>

#include "core/file_io.h"
#include "core/ticket_keys.h"
#include "jobticket/jotf_frame.h"

namespace zorva {

namespace {

std::optional<std::string> UserName() {
  const passwd* pw = getpwuid(getuid());
  if (!pw || !pw->pw_name || !*pw->pw_name) return std::nullopt;
  return std::string(pw->pw_name);
}

// PRETTY_HOSTNAME from systemd's machine-info file, quotes removed.
std::optional<std::string> PrettyHostName() {
  std::ifstream in("/etc/machine-info");
  std::string line;
  constexpr std::string_view kKey = "PRETTY_HOSTNAME=";
  while (std::getline(in, line)) {
    if (!line.starts_with(kKey)) continue;
    std::string value = line.substr(kKey.size());
    if (value.size() >= 2 && (value.front() == '"' || value.front() == '\'') &&
        value.back() == value.front()) {
      value = value.substr(1, value.size() - 2);
    }
    if (!value.empty()) return value;
  }
  return std::nullopt;
}

std::optional<std::string> ComputerName() {
  if (std::optional<std::string> pretty = PrettyHostName()) return pretty;
  char host[256] = {};
  if (gethostname(host, sizeof host - 1) != 0 || !host[0]) return std::nullopt;
  return std::string(host);
}

// The interface of the default route, from the kernel's routing table.
std::optional<std::string> DefaultRouteInterface() {
  std::ifstream in("/proc/net/route");
  std::string line;
  std::getline(in, line);  // column titles
  while (std::getline(in, line)) {
    std::istringstream fields(line);
    std::string iface, destination;
    if (fields >> iface >> destination && destination == "00000000") return iface;
  }
  return std::nullopt;
}

std::optional<std::string> IPv4Address() {
  const std::optional<std::string> iface = DefaultRouteInterface();
  ifaddrs* list = nullptr;
  if (!iface || getifaddrs(&list) != 0) return std::nullopt;
  std::unique_ptr<ifaddrs, void (*)(ifaddrs*)> guard(list, freeifaddrs);
  for (const ifaddrs* a = list; a; a = a->ifa_next) {
    if (!a->ifa_addr || a->ifa_addr->sa_family != AF_INET || *iface != a->ifa_name) continue;
    char text[INET_ADDRSTRLEN] = {};
    const auto* in = reinterpret_cast<const sockaddr_in*>(a->ifa_addr);
    if (inet_ntop(AF_INET, &in->sin_addr, text, sizeof text)) return std::string(text);
  }
  return std::nullopt;
}

void SetOrRemove(Ticket& ticket, std::string_view key, const std::optional<std::string>& value) {
  if (value) {
    ticket.setString(kTicketClientSystem, key, *value);
  } else {
    ticket.remove(key);
  }
}

}  // namespace

// UTF-8 text whose every character lies in U+0020..U+00FE: one byte up to
// U+007F (DEL included), two bytes C2 80..C3 BE above it.
bool InControllerCharset(std::string_view utf8) {
  for (std::size_t i = 0; i < utf8.size(); ++i) {
    const auto b = static_cast<unsigned char>(utf8[i]);
    if (b >= 0x20 && b <= 0x7F) continue;
    if ((b != 0xC2 && b != 0xC3) || i + 1 >= utf8.size()) return false;
    const auto c = static_cast<unsigned char>(utf8[++i]);
    if (c < 0x80 || c > 0xBF || (b == 0xC3 && c == 0xBF)) return false;
  }
  return true;
}

void AddJOTFHostTicketItems(Ticket& ticket) {
  ticket.setDictionary(kTicketClientSystem, tkey::kOptions,
                       Dictionary{{std::string(tkey::kOptionAll), Value(true)}});
  ticket.remove(tkey::kRotateBooklet180);
  ticket.setString(kTicketClientSystem, tkey::kControllerFamily, kJotfControllerFamily);
  ticket.setString(kTicketClientSystem, tkey::kControllerVersion, kJotfControllerVersion);
  SetOrRemove(ticket, tkey::kClientUserName, UserName());
  std::optional<std::string> computer = ComputerName();
  if (computer && !InControllerCharset(*computer)) computer.reset();
  SetOrRemove(ticket, tkey::kClientComputerName, computer);
  SetOrRemove(ticket, tkey::kClientIPAddress, IPv4Address());
}

Dictionary JOTFSettingsFromTicket(const Ticket& ticket) {
  Dictionary settings;
  for (const auto& [key, item] : ticket.items()) {
    if (key.starts_with("com.zorva")) settings.set(key, item.value);
  }
  return settings;
}

std::string JOTFDocumentText(const Dictionary& settings) {
  char* data = nullptr;
  std::size_t size = 0;
  std::FILE* out = open_memstream(&data, &size);
  if (!out) throw std::bad_alloc();
  const auto close = [&] {
    std::fclose(out);
    // The stream is gone; the writers must not keep pointing at it.
    if (jotf_ofp == out) jotf_ofp = nullptr;
  };
  try {
    WriteJOTF(out, settings);
  } catch (...) {
    close();
    std::free(data);
    throw;
  }
  close();
  std::unique_ptr<char, void (*)(void*)> owned(data, std::free);
  return std::string(data ? data : "", size);
}

std::string JOTFExportText(PrintSession& session) {
  // Restores the caller's current session however the writing ends.
  struct CurrentSession {
    PrintSession* previous = GetCurrentPrintSession();
    explicit CurrentSession(PrintSession* s) { SetCurrentPrintSession(s); }
    ~CurrentSession() { SetCurrentPrintSession(previous); }
    CurrentSession(const CurrentSession&) = delete;
    CurrentSession& operator=(const CurrentSession&) = delete;
  } current(&session);
  AddJOTFHostTicketItems(session.printSettings());
  return JOTFDocumentText(JOTFSettingsFromTicket(session.printSettings()));
}

Status JOTFExportToFileAtPath(const std::filesystem::path& path, std::string* reason) {
  PrintSession* session = GetCurrentPrintSession();
  if (!session) {
    if (reason) *reason = "no print session";
    return kPrintSessionErr;
  }
  const std::string text = JOTFExportText(*session);
  const int err = WriteFileAtomically(path, text);
  if (err != 0 && reason) *reason = std::strerror(err);
  return StatusForErrno(err);
}

}  // namespace zorva
