// The editor's answers to requests: each line of the input begins one. "G" and "P" are calls that come in, with what
// they ask for and a body behind a blank; anything else is a request as it stands, headers between tabs. After each the
// list is one that undo leads back from.
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "chlist/serve/editor_site.h"
#include "harness.h"
#include "small_list.h"

namespace {

const std::string token = "token";

// It goes with the program.
class list_to_edit {
 public:
  list_to_edit() {
    std::string folder = std::filesystem::is_directory("/dev/shm") ? "/dev/shm/fuzz-XXXXXX" : "/tmp/fuzz-XXXXXX";
    fuzz::require(::mkdtemp(folder.data()) != nullptr, "a folder for the list");
    folder_ = folder;
    std::ofstream(path()) << fuzz::small_channels_conf;
  }
  ~list_to_edit() { std::filesystem::remove_all(folder_); }
  list_to_edit(const list_to_edit &) = delete;
  list_to_edit &operator=(const list_to_edit &) = delete;

  [[nodiscard]] std::filesystem::path path() const { return folder_ / "list.conf"; }

 private:
  std::filesystem::path folder_;
};

std::string_view take_up_to(char end, std::string_view &rest) {
  const std::size_t found = std::min(rest.find(end), rest.size());
  const std::string_view taken = rest.substr(0, found);
  rest.remove_prefix(std::min(found + 1, rest.size()));
  return taken;
}

chlist::http_request call_of(std::string_view line) {
  const bool is_page = line.front() == 'G';
  line.remove_prefix(1);
  const std::string name(take_up_to(' ', line));
  const chlist::http_headers page = {{"Host", "127.0.0.1:8080"}};
  const chlist::http_headers call = {{"Host", "127.0.0.1:8080"},
                                     {"Origin", "http://127.0.0.1:8080"},
                                     {"Content-Type", "application/json"},
                                     {"Content-Length", std::to_string(line.size())}};
  return {is_page ? "GET" : "POST", "/" + token + "/" + name, is_page ? page : call, std::string(line)};
}

chlist::http_request request_of(std::string_view line) {
  if (line.starts_with('G') || line.starts_with('P')) {
    return call_of(line);
  }
  chlist::http_request request;
  request.method = take_up_to(' ', line);
  request.target = take_up_to('\t', line);
  while (!line.empty()) {
    std::string_view header = take_up_to('\t', line);
    const std::string name(take_up_to(':', header));
    request.headers.emplace_back(name, header);
  }
  return request;
}

// Strangers are told nothing; answers are whole.
void ask(chlist::editor_site &site, const chlist::http_request &request) {
  if (const auto refused = site.refusal(request)) {
    fuzz::require(refused->body.find(token) == std::string::npos, "the secret is told to nobody");
    return;
  }
  fuzz::require(request.target.starts_with("/" + token + "/"), "nobody comes in without the secret");
  const chlist::http_answer answer = site.answer(request);
  fuzz::require(answer.status >= 200 && answer.status < 500, "an answer is no accident");
}

// Edits that read files by name, and regular expressions, which are another library's, are left out.
bool is_ours(std::string_view line) {
  const auto has = [line](std::string_view word) { return line.find(word) != std::string_view::npos; };
  return !has("order") && !has("plan") && !has("merge") && !has("salvage") && !has("~") && !line.starts_with("Psave");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  std::string_view rest(reinterpret_cast<const char *>(data), size);
  static const list_to_edit list;
  chlist::list_session session(list.path());
  if (session.left() != nullptr) {
    session.drop_left();
  }
  chlist::editor_site site(session, chlist::site_door(token, 8080));
  for (int lines = 0; !rest.empty() && lines < 64; ++lines) {
    if (const std::string_view line = take_up_to('\n', rest); !line.empty() && is_ours(line)) {
      ask(site, request_of(line));
    }
  }
  while (session.left() == nullptr && session.can_undo()) {
    session.undo();
  }
  fuzz::require(session.is_saved(), "undo leads back to the list of the file");
  return 0;
}
