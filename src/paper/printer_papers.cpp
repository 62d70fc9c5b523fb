// Fetching the printer's media catalogue and keeping it as the printer paper
// list. The answer is read whole with large reads and decoded from memory:
// the library's own request call reads an answer one small socket read per
// attribute, which for a catalogue of thousands of papers costs more than
// everything else together.
#include "paper/printer_papers.h"

#include <cups/cups.h>

#include <cerrno>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <new>
#include <optional>
#include <vector>

#include "paper/ipp_guard.h"

namespace zorva {
namespace {

using Clock = std::chrono::steady_clock;

// The URI is built by copying "http:///" into a buffer of 8 bytes, which
// keeps the seven characters "http://", then appending the address. The
// printer accepts the URI without a path for this request.
constexpr char kUriPrefix[] = "http:///";
constexpr std::size_t kUriPrefixLimit = 8;

// How often a blocked read wakes to look at the abort flag and the clock.
constexpr double kWaitSliceSeconds = 0.02;
constexpr std::size_t kReadChunk = std::size_t{64} * 1024;

struct HttpCloser {
  void operator()(http_t* http) const { httpClose(http); }
};
using HttpPtr = std::unique_ptr<http_t, HttpCloser>;

struct HostAndPort {
  std::string host;
  int port = 0;
};

std::optional<int> ParsePort(std::string_view text) {
  int port = 0;
  const char* end = text.data() + text.size();
  auto [at, ec] = std::from_chars(text.data(), end, port);
  if (ec != std::errc() || at != end || port <= 0 || port > 65535) return std::nullopt;
  return port;
}

// "host", "host:port", "[v6]", "[v6]:port"; a bare IPv6 address (several
// colons) has no port.
HostAndPort SplitAddress(std::string_view address) {
  HostAndPort out{std::string(address), ippPort()};
  if (address.starts_with('[')) {
    const std::size_t close = address.find(']');
    if (close == std::string_view::npos) return out;
    out.host = std::string(address.substr(1, close - 1));
    std::string_view rest = address.substr(close + 1);
    if (rest.starts_with(':')) {
      if (auto port = ParsePort(rest.substr(1))) out.port = *port;
    }
    return out;
  }
  const std::size_t colon = address.find(':');
  if (colon == std::string_view::npos || address.find(':', colon + 1) != std::string_view::npos) {
    return out;
  }
  if (auto port = ParsePort(address.substr(colon + 1))) {
    out.host = std::string(address.substr(0, colon));
    out.port = *port;
  }
  return out;
}

// Called by the library each time a wait on the connection runs out its
// slice: keep waiting (1) until aborted or past the deadline.
struct WaitState {
  const FetchControl* control;
  Clock::time_point deadline;
};

int KeepWaiting(http_t*, void* data) {
  const auto* state = static_cast<const WaitState*>(data);
  if (state->control->abort != nullptr && state->control->abort->load()) return 0;
  return Clock::now() < state->deadline ? 1 : 0;
}

bool Aborted(const FetchControl& control) {
  return control.abort != nullptr && control.abort->load();
}

bool SendRequest(http_t* http, ipp_t* request) {
  httpClearFields(http);
  httpSetField(http, HTTP_FIELD_CONTENT_TYPE, "application/ipp");
  httpSetLength(http, ippLength(request));
  if (httpPost(http, "/") != 0) return false;
  ippSetState(request, IPP_STATE_IDLE);
  ipp_state_t state;
  while ((state = ippWrite(http, request)) != IPP_STATE_DATA) {
    if (state == IPP_STATE_ERROR) return false;
  }
  return httpFlushWrite(http) >= 0;
}

bool AwaitStatus(http_t* http) {
  http_status_t status;
  do {
    status = httpUpdate(http);
  } while (status == HTTP_STATUS_CONTINUE);
  return status == HTTP_STATUS_OK;
}

// The whole body, or nullopt when it cannot be had (time-out, abort, a
// broken connection, more than the limit).
std::optional<std::vector<unsigned char>> ReadBody(http_t* http, const FetchControl& control) {
  std::vector<unsigned char> body;
  const off_t declared = httpGetLength2(http);
  if (declared > 0 && static_cast<std::size_t>(declared) <= control.maxAnswerBytes) {
    body.reserve(static_cast<std::size_t>(declared));
  }
  std::vector<unsigned char> chunk(kReadChunk);
  while (true) {
    const ssize_t n = httpRead2(http, reinterpret_cast<char*>(chunk.data()), chunk.size());
    if (n == 0) return body;
    if (n < 0 || Aborted(control)) return std::nullopt;
    if (body.size() + static_cast<std::size_t>(n) > control.maxAnswerBytes) return std::nullopt;
    body.insert(body.end(), chunk.begin(), chunk.begin() + n);
  }
}

struct MemoryReader {
  const unsigned char* at;
  std::size_t left;
};

ssize_t ReadFromMemory(void* context, ipp_uchar_t* buffer, size_t bytes) {
  auto* reader = static_cast<MemoryReader*>(context);
  const std::size_t n = bytes < reader->left ? bytes : reader->left;
  if (n == 0) return 0;  // also an empty answer, whose bytes may be null
  std::memcpy(buffer, reader->at, n);
  reader->at += n;
  reader->left -= n;
  return static_cast<ssize_t>(n);
}

// Both strings of the request are made before anything touches the network
// so that running out of memory is reported as the platform did.
struct AddressStrings {
  std::string address;
  std::string uri;
};

std::optional<AddressStrings> MakeAddressStrings(std::string_view address) {
  AddressStrings s;
  try {
    s.address = std::string(address);
  } catch (const std::bad_alloc&) {
    errno = ENOMEM;
    std::perror("Unable to allocate memory for IP address");
    return std::nullopt;
  }
  try {
    s.uri = PrinterUriForAddress(s.address);
  } catch (const std::bad_alloc&) {
    errno = ENOMEM;
    std::perror("Unable to allocate memory for HTTP address");
    return std::nullopt;
  }
  return s;
}

PrinterAnswer Exchange(http_t* http, const std::string& uri, const FetchControl& control) {
  WaitState wait{&control, Clock::now() + control.answerTimeout};
  httpSetTimeout(http, kWaitSliceSeconds, KeepWaiting, &wait);
  IppPtr request = NewMediaColDatabaseRequest(uri);
  PrinterAnswer result;
  if (!request || !SendRequest(http, request.get()) || !AwaitStatus(http)) return result;
  std::optional<std::vector<unsigned char>> body = ReadBody(http, control);
  if (!body) return result;
  result.answer = DecodeIppMessage(body->data(), body->size());
  if (result.answer) result.outcome = FetchOutcome::Answer;
  return result;
}

PrinterAnswer Fetch(const AddressStrings& s, const FetchControl& control) {
  const HostAndPort target = SplitAddress(s.address);
  const int msec = static_cast<int>(control.connectTimeout.count());
  HttpPtr http(httpConnect2(target.host.c_str(), target.port, nullptr, AF_UNSPEC, cupsEncryption(),
                            1, msec, nullptr));
  if (!http || Aborted(control)) {
    PrinterAnswer none;
    none.outcome = FetchOutcome::NoConnection;
    return none;
  }
  return Exchange(http.get(), s.uri, control);
}

}  // namespace

PrinterStockList& PrinterStockLibraryList() {
  static PrinterStockList gPrinterStockLibraryList;
  return gPrinterStockLibraryList;
}

std::string PrinterUriForAddress(std::string_view address) {
  std::string uri(kUriPrefix, kUriPrefixLimit - 1);
  uri += address;
  return uri;
}

IppPtr NewMediaColDatabaseRequest(const std::string& printerUri) {
  IppPtr request(ippNew());
  if (!request) return request;
  ippSetOperation(request.get(), IPP_OP_GET_PRINTER_ATTRIBUTES);
  ippSetRequestId(request.get(), 1);
  ipp_t* r = request.get();
  ippAddString(r, IPP_TAG_OPERATION, IPP_TAG_CHARSET, "attributes-charset", nullptr, "utf-8");
  ippAddString(r, IPP_TAG_OPERATION, IPP_TAG_LANGUAGE, "attributes-natural-language", nullptr,
               "en");
  ippAddString(r, IPP_TAG_OPERATION, IPP_TAG_URI, "printer-uri", nullptr, printerUri.c_str());
  ippAddString(r, IPP_TAG_OPERATION, IPP_TAG_MIMETYPE, "document-format", nullptr,
               "application/octet-stream");
  ippAddString(r, IPP_TAG_OPERATION, IPP_TAG_KEYWORD, "requested-attributes", nullptr,
               "media-col-database");
  return request;
}

IppPtr DecodeIppMessage(const unsigned char* data, std::size_t size) {
  if (!IppNestingWithin(data, size, kMaxIppCollectionDepth)) return nullptr;
  IppPtr message(ippNew());
  if (!message) return message;
  MemoryReader reader{data, size};
  ipp_state_t state;
  while ((state = ippReadIO(&reader, ReadFromMemory, 1, nullptr, message.get())) !=
         IPP_STATE_DATA) {
    if (state == IPP_STATE_ERROR) return nullptr;
  }
  return message;
}

PrinterAnswer FetchMediaColDatabase(std::string_view address, const FetchControl& control) {
  std::optional<AddressStrings> strings = MakeAddressStrings(address);
  if (!strings) return {};
  return Fetch(*strings, control);
}

Status RetrievePrinterStockLibrary(std::string_view address, const FetchControl& control) {
  std::optional<AddressStrings> strings = MakeAddressStrings(address);
  if (!strings) return kMemFullErr;
  PrinterAnswer got = Fetch(*strings, control);
  if (got.outcome == FetchOutcome::NoConnection) {
    std::perror("Unable to connect to server");
    return kNoConnection;
  }
  if (got.outcome == FetchOutcome::NoAnswer) return kNoErr;
  try {
    PrinterStockLibraryList().clear();
    PrinterStockLibraryList() = PrinterStocksFromAnswer(got.answer.get());
  } catch (const std::bad_alloc&) {
    PrinterStockLibraryList().clear();
    return kMemFullErr;
  }
  return kNoErr;
}

Status RetrievePrinterStockLibrary(std::string_view address) {
  return RetrievePrinterStockLibrary(address, FetchControl{});
}

}  // namespace zorva
