// Reads one screen's configuration the way an application does with the installed library:
// write the request, read a device answer into the caller's record. Exits 0 when both match.
#include <json/json.h>

#include <cstdio>
#include <cstring>
#include <memory>
#include <string>

#include "guidescreen_codec.h"

int main() {
  tagNET_IN_GET_GUIDESCREEN_CFG_BYID in = {};
  in.dwSize = sizeof in;
  std::strcpy(in.szScreenID, "hall-1");
  Json::Value params(Json::objectValue);
  serialize(in, params);

  const std::string answer =
      R"({"DisplayScreenCfg": {"ID": "hall-1", "Status": 1, "Width": 1920}})";
  Json::Value result;
  const std::unique_ptr<Json::CharReader> reader(Json::CharReaderBuilder().newCharReader());
  if (!reader->parse(answer.data(), answer.data() + answer.size(), &result, nullptr)) return 1;
  static tagNET_OUT_GET_GUIDESCREEN_CFG_BYID out = {};
  out.dwSize = sizeof out;
  deserialize(result, out);

  std::printf("request ScreenID %s; screen %s, status %d, width %u\n",
              params["ScreenID"].asCString(), out.stuInfo.szID,
              static_cast<int>(out.stuInfo.emStatus), out.stuInfo.nWidth);
  const bool ok =
      params["ScreenID"].asString() == "hall-1" && std::strcmp(out.stuInfo.szID, "hall-1") == 0 &&
      out.stuInfo.emStatus == EM_GUIDESCREEN_STATUS_JSON_1 && out.stuInfo.nWidth == 1920;
  return ok ? 0 : 1;
}
