// The output side of the job-ticket writer: the sink every writer emits its
// text through, the stream the default sink writes to, the growing line
// formatter, and the escaping of user text into XML character data.
#pragma once

#include <cstdio>
#include <string>
#include <string_view>

#include "core/value.h"

namespace zorva {

// A write function and its opaque handle. Writers call
// write(handle, text, strlen(text)); some pass a length of 0, so a sink must
// write the whole NUL-terminated text whatever the length says.
struct JotfSink {
  void* handle;
  int (*write)(void* handle, const char* text, int length);
};

// The thread-local storage model of the writer's per-thread state. The dialog
// plug-in carries this code in a module loaded with dlopen; its few bytes of
// thread-local data then live in the static block every thread has, rather
// than in blocks the loader hands out on first use (which the leak checker
// cannot always walk).
#define ZORVA_TLS_MODEL __attribute__((tls_model("initial-exec")))

// The stream DevWriteJotf writes to. WriteJOTF sets it and leaves it set.
// Per thread, so that two threads can each write their own document.
extern thread_local std::FILE* jotf_ofp ZORVA_TLS_MODEL;

// Writes the whole NUL-terminated text to jotf_ofp; the length is ignored.
// Nothing happens while no stream is set. Stream errors are not reported.
int DevWriteJotf(void* handle, const char* text, int length);

// The sink every writer uses: handle null, write function DevWriteJotf.
extern JotfSink writeData;

// Replaces the five XML special characters (& < > ' ") by their entities.
// The entity table of the platform call this mirrors is accepted and ignored.
std::string XMLCreateStringByEscapingEntities(std::string_view text,
                                              const Dictionary* ignored = nullptr);

// ---- Emitting ----------------------------------------------------------------

// Passes text to the sink with its length in bytes.
void JotfWrite(const JotfSink* sink, const char* text);
// Passes text to the sink with a length of 0 (the finishing, accounting and
// page-range writers do so; the sink writes the whole text regardless).
void JotfWriteNoLength(const JotfSink* sink, const char* text);

// printf into `buffer`, growing it to fit whatever the arguments' length.
// Returns buffer.c_str().
const char* JotfFormatInto(std::string& buffer, const char* format, ...)
    __attribute__((format(printf, 2, 3)));

// Formats into a per-thread buffer and writes the result with its length.
void JotfPrintf(const JotfSink* sink, const char* format, ...)
    __attribute__((format(printf, 2, 3)));

}  // namespace zorva
