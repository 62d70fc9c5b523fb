/* C entry points of the job-ticket writer, for programs in other languages
 * that must produce the same job ticket from a print-settings dictionary.
 * No C++ exception crosses these functions; failures are status codes. */
#ifndef ZORVA_JOBTICKET_JOTF_C_API_H
#define ZORVA_JOBTICKET_JOTF_C_API_H

#include <plist/plist.h>
#include <stddef.h>
#include <stdio.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Status codes. */
#define ZORVA_JOTF_OK 0
#define ZORVA_JOTF_PARAM_ERR (-50) /* null argument, unreadable list, root not a dictionary */
#define ZORVA_JOTF_MEM_FULL (-108) /* out of memory */

/* Writes the job ticket of a settings dictionary given as property-list text
 * (XML, or binary when it starts with "bplist00") of `length` bytes to `out`.
 * The dictionary is used as it stands: it must hold
 * "com.zorva.print.JOTFOptions" for anything to be written. The stream is
 * neither flushed nor closed. */
int zorva_jotf_write_xml(const char* plistXml, size_t length, FILE* out);

/* The same for a libplist dictionary node (not taken over; the caller still
 * frees it). */
int zorva_jotf_write_plist(plist_t settings, FILE* out);

#ifdef __cplusplus
}
#endif

#endif
