/*
 * quill.h - the C interface of the quill code-assistance engine.
 *
 * The engine offers three services on text buffers: a Verilog formatter
 * (n5p8w), a Verilog linter returning JSON diagnostics (t2v6r) and a per-byte
 * syntax classifier for FPGA constraint and Tcl files (x4b7d), plus its
 * version string (q7m2k) and the release function for strings it returns
 * (h3x9c). These five functions are the only symbols the library exports.
 *
 * Text arguments are byte strings (UTF-8 or ASCII); the engine never decodes
 * them except where the classifier skips UTF-8 continuation bytes. No call
 * raises, logs, reads or writes files, or keeps state between calls.
 *
 * Length rule (n5p8w, t2v6r): a length of 1 or more means exactly that many
 * bytes are read from the text, NUL bytes included; a length of 0 or less
 * means the text is a NUL-terminated string read up to its NUL.
 *
 * Ownership: strings returned by q7m2k and t2v6r are allocated by the engine
 * and belong to the caller, who must release each exactly once with h3x9c
 * (never with the caller's own free). Buffers passed in (out) belong to the
 * caller and are written only when the whole result fits; a buffer that is too
 * small is left untouched, every byte of it.
 *
 * Threads: every function may be called from any number of threads at once,
 * from the very first call on. The shared tables are built when the library is
 * loaded or under thread-safe one-time initialisation, and are read-only
 * afterwards. Each call works on its own copies of the text.
 *
 * Order of lint findings: findings come grouped by check in the fixed order
 * latch, multi-driver, width-mismatch, blocking-assign, dupli-define,
 * repeated-assig, used-bef-declare, comb-loop, dupli-inst, reg-assign,
 * wire-always. Checks that group findings by name (multi-driver,
 * repeated-assig, dupli-define within its signal and parameter passes,
 * used-bef-declare, dupli-inst) visit the names in ascending order of the line
 * of their first finding, then by name in byte order, so the report is the
 * same on every run and platform. Line numbers in the "line" field are
 * zero-based.
 */
#ifndef QUILL_H
#define QUILL_H

#include <stdint.h>

#if defined(_WIN32)
#  if defined(QUILL_BUILDING_LIBRARY)
#    define QUILL_API __declspec(dllexport)
#  else
#    define QUILL_API __declspec(dllimport)
#  endif
#elif defined(__GNUC__)
#  define QUILL_API __attribute__((visibility("default")))
#else
#  define QUILL_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* Class codes written by x4b7d, one byte per input byte. */
typedef enum QuillTokenClass {
  QUILL_TOKEN_PLAIN = 0,        /* white space, punctuation, numbers, unknown words */
  QUILL_TOKEN_COMMENT = 1,      /* from "#" to the end of the line */
  QUILL_TOKEN_STRING = 2,       /* a double-quoted string, quotes included */
  QUILL_TOKEN_KEYWORD = 3,      /* constraint and Tcl keywords */
  QUILL_TOKEN_PROPERTY = 4,     /* pin properties such as PACKAGE_PIN */
  QUILL_TOKEN_IO_STANDARD = 5,  /* I/O standards such as LVCMOS33 */
  QUILL_TOKEN_PIN_NAME = 6,     /* package pins such as W5, AB12, PIN_A5 */
  QUILL_TOKEN_PORT_NAME = 7,    /* port objects of get_ports */
  QUILL_TOKEN_BRACE = 8,        /* "{" and "}" */
  QUILL_TOKEN_TOOL_COMMAND = 9, /* tool commands such as synth_design */
  QUILL_TOKEN_FLOW_COMMAND = 10 /* flow commands such as execute_flow */
} QuillTokenClass;

/*
 * Formats one Verilog source text.
 *
 * text      the source; read by the length rule. Must not be NULL.
 * length    its length in bytes, or 0 or less for a NUL-terminated text.
 * out       the caller's buffer for the result. Must not be NULL.
 * capacity  the size of out in bytes, room for the terminating NUL included.
 *
 * Returns n >= 1, the length of the formatted text, after writing its n bytes
 * and a NUL to out. The result ends with exactly one LF and has no CR before
 * an LF, except that a text recognised as foreign source (Python) is returned
 * byte for byte. An empty or all-blank text gives "\n".
 *
 * Errors (out is left untouched):
 *   -1       text or out is NULL, capacity is less than 1, or the engine
 *            could not allocate working memory;
 *   -(n + 1) the result needs n + 1 bytes (NUL included) and capacity is
 *            smaller: call again with a buffer of at least -result bytes.
 */
QUILL_API int32_t n5p8w(const char* text, int32_t length, char* out, int32_t capacity);

/*
 * Lints one Verilog source text.
 *
 * text    the source; read by the length rule. NULL with a length of 0 or
 *         less (or any length) is the empty text.
 * length  its length in bytes, or 0 or less for a NUL-terminated text.
 *
 * Returns a newly allocated NUL-terminated JSON array of findings, each
 * {"severity":"error"|"warning","line":N,"check":"...","message":"..."} with
 * no white space; "[]" when there is nothing to report. An internal failure
 * gives a one-element array with check "cpp-exception". Returns NULL only
 * when the result cannot be allocated. Release the string with h3x9c.
 */
QUILL_API char* t2v6r(const char* text, int32_t length);

/*
 * Classifies a constraint or Tcl text byte by byte for syntax colouring.
 *
 * text      the text; exactly length bytes are read (no NUL rule here).
 * length    its length in bytes; must be 1 or more.
 * out       the caller's buffer of class codes (QuillTokenClass values).
 * capacity  the size of out in bytes.
 *
 * Returns length after writing exactly length class bytes to out (no NUL).
 * Returns 0 without writing when text is NULL or length is less than 1, and
 * -length without writing when capacity is less than length or out is NULL.
 */
QUILL_API int32_t x4b7d(const char* text, int32_t length, unsigned char* out, int32_t capacity);

/*
 * Returns a newly allocated copy of the version string "core_engine v1.25"
 * (18 bytes with its NUL), or NULL if it cannot be allocated. Release it with
 * h3x9c.
 */
QUILL_API char* q7m2k(void);

/*
 * Releases a string returned by q7m2k or t2v6r. NULL is allowed and ignored.
 * Passing any other pointer, or the same pointer twice, is undefined.
 */
QUILL_API void h3x9c(char* p);

#ifdef __cplusplus
} /* extern "C" */
#endif

#endif /* QUILL_H */
