// A bounded formatted print that leaves the terminator out when the text fills the limit.
#ifndef GUIDESCREEN_CODEC_CODEC_SNPRINTF_H
#define GUIDESCREEN_CODEC_CODEC_SNPRINTF_H

// Formats like printf into `buffer` and stores at most `limit` characters:
//   a text shorter than `limit` is stored with its terminator, and its length is returned;
//   a text exactly `limit` long is stored without terminator, and `limit` is returned;
//   a longer text has its first `limit` characters stored, without terminator, and -1 is returned.
// Nothing past buffer[limit - 1] is ever written. Callers that need a terminated text pass a
// zero-filled buffer longer than `limit`. (The platform has no such function; this is ours.)
// The reserved-looking name is part of the API.
// NOLINTNEXTLINE(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
int _snprintf(char* buffer, unsigned long limit, const char* format, ...)
#if defined(__GNUC__)
    __attribute__((format(printf, 3, 4)))
#endif
    ;

#endif  // GUIDESCREEN_CODEC_CODEC_SNPRINTF_H
