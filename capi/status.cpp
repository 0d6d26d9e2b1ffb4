// The C interface's statuses and the version of the library that is loaded.
#include "guidescreen_codec/capi.h"
#include "guidescreen_codec/version.h"

extern "C" const char* gsc_status_message(int status) {
  switch (status) {
    case GSC_STATUS_OK:
      return "success";
    case GSC_STATUS_UNKNOWN_OPERATION:
      return "unknown operation";
    case GSC_STATUS_MALFORMED_JSON:
      return "malformed JSON";
    case GSC_STATUS_CONVERSION_FAILED:
      return "failed conversion";
    case GSC_STATUS_BUFFER_TOO_SMALL:
      return "buffer too small";
    case GSC_STATUS_WRONG_RECORD_SIZE:
      return "record size (dwSize) is not the operation's record size";
    case GSC_STATUS_INVALID_ARGUMENT:
      return "invalid argument";
    case GSC_STATUS_OUT_OF_MEMORY:
      return "out of memory";
    case GSC_STATUS_INTERNAL_ERROR:
      return "internal error";
    case GSC_STATUS_INVALID_FIELDS:
      return "the field-named form does not describe the record";
    default:
      return "unknown status";
  }
}

extern "C" const char* gsc_version(void) {
  return GSC_VERSION_STRING;
}
