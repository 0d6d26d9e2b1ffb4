// The report behind the C interface's opaque gsc_report handle.
#ifndef GUIDESCREEN_CODEC_CAPI_REPORT_HANDLE_H
#define GUIDESCREEN_CODEC_CAPI_REPORT_HANDLE_H

#include "guidescreen_codec/capi.h"
#include "guidescreen_codec/report.h"

struct gsc_report {
  gsc::Report report;
};

#endif  // GUIDESCREEN_CODEC_CAPI_REPORT_HANDLE_H
