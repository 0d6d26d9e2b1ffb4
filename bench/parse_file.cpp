// JsonCpp alone on a JSON file: the time its reader takes to parse the text and the memory the
// parsed tree holds, the baseline gscodec's figures on large answers are set against
// (bench/large-answer). The reader is set up as the C entry points set theirs up.
#include <json/json.h>

#include <chrono>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <memory>
#include <string>

namespace {

// Resident memory of this process, in kB.
long ResidentKb() {
  std::ifstream statm("/proc/self/statm");
  long size = 0, resident = 0;
  statm >> size >> resident;
  return resident * 4;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: gsc_parse_file FILE\n";
    return 2;
  }
  // Read straight into a string of the file's size: a stream buffer growing by doubling would
  // leave the peak memory of this process (the baseline of gscodec's) two copies of the text high.
  std::ifstream in(argv[1], std::ios::binary | std::ios::ate);
  if (!in) {
    std::cerr << "gsc_parse_file: cannot read " << argv[1] << "\n";
    return 1;
  }
  std::string text(static_cast<size_t>(in.tellg()), '\0');
  in.seekg(0);
  in.read(text.data(), static_cast<std::streamsize>(text.size()));
  const long before = ResidentKb();
  const auto start = std::chrono::steady_clock::now();
  Json::Value root;
  std::string errors;
  Json::CharReaderBuilder builder;
  builder["collectComments"] = false;
  builder["failIfExtra"] = true;
  const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
  if (!reader->parse(text.data(), text.data() + text.size(), &root, &errors)) {
    std::cerr << errors;
    return 1;
  }
  const double seconds =
      std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  std::printf("parse %.3f s, tree %ld kB\n", seconds, ResidentKb() - before);
  return 0;
}
