/* A C99 program that uses the library the way a C caller does, through capi.h alone: it lays out
 * a programme's element buffer, writes the request that adds it, reads a device answer back into
 * records and walks the element buffer the codecs filled. Built with -std=c99 -Wpedantic and run
 * by the tests; exits 0 when every check holds. */
#include <stdio.h>
#include <string.h>

#include "guidescreen_codec.h"

static int failures = 0;
static int checks = 0;

#define CHECK(condition)                                                      \
  do {                                                                        \
    ++checks;                                                                 \
    if (!(condition)) {                                                       \
      ++failures;                                                             \
      fprintf(stderr, "%s:%d: failed: %s\n", __FILE__, __LINE__, #condition); \
    }                                                                         \
  } while (0)

static void copy_text(char* field, size_t size, const char* text) {
  strncpy(field, text, size - 1);
  field[size - 1] = '\0';
}

/* Static buffers sized by the constant expressions, as C code without malloc would. */
static unsigned char elements[GSC_ELEMENT_BUFFER_SIZE(4)];
static tagNET_IN_ADD_ONE_PROGRAMME add_request;
static tagNET_OUT_GET_PROGRAMME_BYID answer;

static void write_request(void) {
  tagNET_PROGRAMME_WINDOW_INFO* window = &add_request.stuInfo.stuOrdinary.stuWindows[0];
  tagNET_VIDEO_ELEMENT_INFO video;
  tagNET_TEXT_ELEMENT_INFO text;
  uint32_t used = 0;
  char json[8192];
  size_t length = 0;

  memset(&video, 0, sizeof video);
  memset(&text, 0, sizeof text);
  copy_text(video.szName, sizeof video.szName, "welcome clip");
  copy_text(video.szPath, GSC_PATH_SIZE, "/media/welcome.mp4");
  copy_text(text.szName, GSC_NAME_SIZE, "hours");
  copy_text(text.stuText.szContent, GSC_CONTENT_SIZE, "Open daily");
  text.stuText.dbLineHeight = 1.5;

  CHECK(gsc_element_append(elements, sizeof elements, &used, EM_ELEMENT_TYPE_VIDEO, &video) ==
        GSC_STATUS_OK);
  CHECK(gsc_element_append(elements, sizeof elements, &used, EM_ELEMENT_TYPE_TEXT, &text) ==
        GSC_STATUS_OK);
  CHECK(used == gsc_element_entry_size(EM_ELEMENT_TYPE_VIDEO) +
                    gsc_element_entry_size(EM_ELEMENT_TYPE_TEXT));
  /* A buffer with no room left refuses the entry and keeps its count. */
  CHECK(gsc_element_append(elements, used, &used, EM_ELEMENT_TYPE_TEXT, &text) ==
        GSC_STATUS_BUFFER_TOO_SMALL);

  add_request.dwSize = sizeof add_request;
  copy_text(add_request.stuInfo.szProgrammeName, GSC_NAME_SIZE, "Lobby");
  add_request.stuInfo.stuOrdinary.nWindowsNum = 1;
  window->nElementsNum = 2;
  window->pElementsBuf = elements;
  window->nElementsBufLen = used;

  CHECK(gsc_serialize_json("ADD_ONE_PROGRAMME", &add_request, json, sizeof json, &length) ==
        GSC_STATUS_OK);
  CHECK(length == strlen(json));
  CHECK(strstr(json, "\"Path\":\"/media/welcome.mp4\"") != NULL);
  CHECK(strstr(json, "\"Content\":\"Open daily\"") != NULL);
  CHECK(gsc_serialize_json("ADD_ONE_PROGRAMME", &add_request, NULL, 0, &length) ==
        GSC_STATUS_BUFFER_TOO_SMALL);
  CHECK(length == strlen(json));
}

static void read_answer(void) {
  static const char text[] =
      "{\"Programme\": {\"ProgrammeName\": \"Lobby\", \"Enable\": true, \"Ordinary\": {"
      "\"Windows\": [{\"WinID\": \"media\", \"Elements\": ["
      "{\"Type\": 4, \"Name\": \"camera\", \"DeviceInfo\": {\"IP\": \"192.0.2.20\"}},"
      "{\"Type\": 9},"
      "{\"Type\": 3, \"Name\": \"slot\"}]}]}}}";
  tagNET_PROGRAMME_WINDOW_INFO* window = &answer.stuProgramme.stuOrdinary.stuWindows[0];
  char message[128];
  uint32_t offset = 0;
  uint32_t j;
  EM_ELEMENT_TYPE kinds[3];
  gsc_element_record records[3];

  memset(elements, 0, sizeof elements);
  answer.dwSize = sizeof answer;
  window->pElementsBuf = elements;
  window->nElementsBufLen = (uint32_t)sizeof elements;
  CHECK(gsc_deserialize_json("GET_PROGRAMME_BYID", text, strlen(text), &answer, message,
                             sizeof message) == GSC_STATUS_OK);
  CHECK(message[0] == '\0');
  CHECK(strcmp(answer.stuProgramme.szProgrammeName, "Lobby") == 0);
  CHECK(answer.stuProgramme.bEnable);
  CHECK(window->nElementsNum == 3);

  for (j = 0; j < window->nElementsNum && j < 3; ++j)
    CHECK(gsc_element_next(window->pElementsBuf, window->nElementsBufLen, &offset, &kinds[j],
                           &records[j], sizeof records[j]) == GSC_STATUS_OK);
  CHECK(kinds[0] == EM_ELEMENT_TYPE_CAPTURE);
  CHECK(strcmp(records[0].stuCapture.szIP, "192.0.2.20") == 0);
  CHECK(kinds[1] == EM_ELEMENT_TYPE_UNKNOWN);
  CHECK(kinds[2] == EM_ELEMENT_TYPE_PLACEHOLDER);
  CHECK(strcmp(records[2].stuPlaceHolder.szName, "slot") == 0);
  CHECK(offset == gsc_element_entry_size(EM_ELEMENT_TYPE_CAPTURE) + GSC_ELEMENT_HEADER_SIZE +
                      gsc_element_entry_size(EM_ELEMENT_TYPE_PLACEHOLDER));
}

static void refuse_bad_calls(void) {
  tagNET_OUT_DEL_PROGRAMMES out;
  char message[128];
  out.dwSize = sizeof out;
  CHECK(gsc_deserialize_json("DEL_PROGRAMMES", "{\"a\": }", 7, &out, message, sizeof message) ==
        GSC_STATUS_MALFORMED_JSON);
  CHECK(strncmp(message, "malformed JSON: line 1, column 7", 32) == 0);
  /* Strict JSON only: a comment is not. */
  CHECK(gsc_deserialize_json("DEL_PROGRAMMES", "{} /* none */", 13, &out, message,
                             sizeof message) == GSC_STATUS_MALFORMED_JSON);
  CHECK(strcmp(message, "malformed JSON: line 1, column 4: unexpected text after the value") == 0);
  CHECK(gsc_deserialize_json("DEL_PROGRAMME", "{}", 2, &out, message, sizeof message) ==
        GSC_STATUS_UNKNOWN_OPERATION);
  out.dwSize = 0;
  CHECK(gsc_deserialize_json("DEL_PROGRAMMES", "{}", 2, &out, message, sizeof message) ==
        GSC_STATUS_WRONG_RECORD_SIZE);
  CHECK(strcmp(message, gsc_status_message(GSC_STATUS_WRONG_RECORD_SIZE)) == 0);
}

/* A listing with one programme a device got wrong: skipped, the others read, and the findings
 * read through the report handle. */
static void read_findings(void) {
  static const char listing[] =
      "{\"infos\": {\"a\": {\"ProgrammeID\": \"a\"}, \"b\": {\"ProgrammeID\": \"b\","
      " \"Enable\": \"yes\"}, \"c\": {\"ProgrammeID\": \"c\"}}}";
  static tagNET_OUT_GET_ALL_BRIEFLYPROGRAMMES out;
  gsc_report* report = gsc_report_new();
  char json[512];
  size_t length = 0;
  out.dwSize = sizeof out;
  CHECK(report != NULL);
  CHECK(gsc_deserialize_json_report("GET_ALL_BRIEFLYPROGRAMMES", listing, sizeof listing - 1, &out,
                                    GSC_SKIP_FAILURES, report, NULL, 0) == GSC_STATUS_OK);
  CHECK(out.nRetInfosNum == 3 && strcmp(out.stuInfos[2].szProgrammeID, "c") == 0);
  CHECK(gsc_report_count(report) == 1);
  CHECK(strcmp(gsc_report_kind(report, 0), "conversion-failed") == 0);
  CHECK(strcmp(gsc_report_path(report, 0), "infos.b.Enable") == 0);
  CHECK(strcmp(gsc_report_detail(report, 0), "Value is not convertible to bool.") == 0);
  CHECK(gsc_report_path(report, 1) == NULL);
  CHECK(gsc_report_json(report, json, sizeof json, &length) == GSC_STATUS_OK);
  CHECK(strcmp(json,
               "[{\"kind\":\"conversion-failed\",\"path\":\"infos.b.Enable\","
               "\"detail\":\"Value is not convertible to bool.\"}]") == 0 &&
        length == strlen(json));
  /* The buffers given back, the next answer is read all the same. */
  gsc_release_json_buffers();
  CHECK(gsc_deserialize_json_report("GET_ALL_BRIEFLYPROGRAMMES", listing, sizeof listing - 1, &out,
                                    GSC_SKIP_FAILURES, report, NULL, 0) == GSC_STATUS_OK);
  CHECK(out.nRetInfosNum == 3 && gsc_report_count(report) == 1);
  gsc_report_free(report);
}

int main(void) {
  size_t i;
  CHECK(strcmp(gsc_version(), GSC_VERSION_STRING) == 0);
  CHECK(gsc_operation_count() == 17);
  for (i = 0; i < gsc_operation_count(); ++i) CHECK(gsc_request_size(gsc_operation_name(i)) > 0);
  write_request();
  read_answer();
  refuse_bad_calls();
  read_findings();
  printf("C99 caller: %d checks, %d failed\n", checks, failures);
  return failures == 0 ? 0 : 1;
}
