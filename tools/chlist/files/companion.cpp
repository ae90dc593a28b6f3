// The document: JSON of schema 1, everything by its name.
#include "chlist/files/companion.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <limits>
#include <span>
#include <utility>

#include "chlist/fields/pids.h"
#include "chlist/files/file_bytes.h"
#include "chlist/files/fingerprint.h"
#include "chlist/files/replacement.h"
#include "chlist/json/json.h"
#include "chlist/line_up/selection.h"

namespace chlist {
namespace {

namespace fs = std::filesystem;

constexpr int companion_schema = 1;
constexpr int companion_indentation = 1;

struct named_shortened_text {
  std::string_view name;
  std::optional<shortened_text> companion_service::*text;
};

constexpr named_shortened_text shortened_texts[] = {{"name", &companion_service::name},
                                                    {"short_name", &companion_service::short_name},
                                                    {"provider", &companion_service::provider},
                                                    {"source", &companion_service::source}};

constexpr std::array all_stream_kinds = {stream_kind::video,    stream_kind::audio,     stream_kind::dolby,
                                         stream_kind::teletext, stream_kind::subtitles, stream_kind::other};

[[noreturn]] void refuse(const std::string &why) { throw bad_companion(why); }

// What a member has to be, or the document is none.
const json &member_of(const json &object, std::string_view name) {
  const json *found = object.is_object() ? object.find(name) : nullptr;
  if (found == nullptr) {
    refuse(fmt::format("'{}' is missing", name));
  }
  return *found;
}

const std::string &text_in(const json &object, std::string_view name) {
  const json &value = member_of(object, name);
  if (!value.is_string()) {
    refuse(fmt::format("'{}' is no text", name));
  }
  return value.as_string();
}

template <class Number>
Number number_from(const json &value, std::string_view name, Number most = std::numeric_limits<Number>::max()) {
  if (!value.is_integer() || value.as_integer() < 0 || value.as_integer() > std::int64_t{most}) {
    refuse(fmt::format("'{}' is no number from 0 to {}", name, most));
  }
  return static_cast<Number>(value.as_integer());
}

// The array need not be there.
std::span<const json> elements_of(const json &object, std::string_view name) {
  const json *found = object.find(name);
  if (found != nullptr && !found->is_array()) {
    refuse(fmt::format("'{}' is no array", name));
  }
  return found != nullptr ? found->elements() : std::span<const json>();
}

channel::identity identity_in(const json &object, std::string_view name) {
  const std::string &text = text_in(object, name);
  const auto id = read_identity(text);
  if (!id) {
    refuse(fmt::format("'{}' is no identity: {}", name, text));
  }
  return *id;
}

tuning tuning_from(const json &object) {
  tuning tuned;
  for (std::size_t at = 0; at < tuning_parameters; ++at) {
    const auto parameter = static_cast<tuning_parameter>(at);
    const std::string_view name = words_of(parameter).name;
    const json *value = object.find(name);
    if (value == nullptr) {
      continue;
    }
    const std::string text = value->is_integer() ? std::to_string(value->as_integer()) : text_in(object, name);
    if (!is_value_of(parameter, text)) {
      refuse(fmt::format("'{}' cannot be {}", name, text));
    }
    tuned[parameter] = text;
  }
  return tuned;
}

json json_of_tuning(const tuning &tuned) {
  json object = json::object();
  for (const auto &[parameter, value] : tuned) {
    const parameter_words &known = words_of(parameter);
    const bool is_number = known.is_number() && value != "auto";
    object.put(std::string(known.name), is_number ? json(std::int64_t{std::stoll(value)}) : json(value));
  }
  return object;
}

elementary_stream stream_from(const json &object) {
  elementary_stream made;
  made.pid = number_from<std::uint16_t>(member_of(object, "pid"), "pid", largest_pid);
  const std::string &kind = text_in(object, "kind");
  const auto *const found = std::ranges::find(all_stream_kinds, kind, name_of_stream);
  if (found == all_stream_kinds.end()) {
    refuse("a stream is of no known kind: " + kind);
  }
  made.kind = *found;
  made.type = object.contains("type") ? number_from<std::uint8_t>(object["type"], "type") : std::uint8_t{0};
  made.language = object.contains("language") ? text_in(object, "language") : std::string();
  return made;
}

json json_of_stream(const elementary_stream &stream) {
  json object = {{"pid", stream.pid}, {"kind", name_of_stream(stream.kind)}};
  if (stream.type != 0) {
    object.put("type", stream.type);
  }
  if (!stream.language.empty()) {
    object.put("language", stream.language);
  }
  return object;
}

further_facts further_from(const json &object) {
  further_facts facts;
  if (const json *tuned = object.find("tuning")) {
    facts.tuned = tuning_from(*tuned);
  }
  for (const json &each : elements_of(object, "streams")) {
    facts.streams.push_back(stream_from(each));
  }
  for (const json &each : elements_of(object, "ca_ids")) {
    facts.ca_ids.push_back(number_from<std::uint16_t>(each, "ca_ids"));
  }
  return facts;
}

void put_further(json &object, const further_facts &facts) {
  if (!facts.tuned.empty()) {
    object.put("tuning", json_of_tuning(facts.tuned));
  }
  if (!facts.streams.empty()) {
    json streams = json::array();
    for (const elementary_stream &each : facts.streams) {
      streams.push_back(json_of_stream(each));
    }
    object.put("streams", std::move(streams));
  }
  if (!facts.ca_ids.empty()) {
    object.put("ca_ids", json(facts.ca_ids));
  }
}

companion_service service_from(const json &object) {
  companion_service made{.id = identity_in(object, "id"), .further = further_from(object)};
  for (const auto &[name, text] : shortened_texts) {
    if (const json *found = object.find(name)) {
      made.*text = {text_in(*found, "whole"), text_in(*found, "kept")};
    }
  }
  return made;
}

json json_of_service(const companion_service &service) {
  json object = {{"id", identity_text(service.id)}};
  for (const auto &[name, text] : shortened_texts) {
    if (const auto &shortened = service.*text) {
      object.put(std::string(name), json{{"whole", shortened->whole}, {"kept", shortened->kept}});
    }
  }
  put_further(object, service.further);
  return object;
}

bool is_true_in(const json &object, std::string_view name) {
  const json *found = object.find(name);
  return found != nullptr && found->is_bool() && found->as_bool();
}

// Text alone stands for a piece of no service.
source_piece piece_from(const json &value) {
  if (value.is_string()) {
    return {.text = value.as_string()};
  }
  source_piece made{.text = text_in(value, "text"), .is_latin_1 = is_true_in(value, "latin_1")};
  if (value.contains("service")) {
    made.service = identity_in(value, "service");
    made.is_again = is_true_in(value, "again");
  }
  return made;
}

json json_of_piece(const source_piece &piece) {
  if (!piece.service && !piece.is_latin_1) {
    return piece.text;
  }
  json object = json::object();
  if (piece.service) {
    object.put("service", identity_text(*piece.service));
  }
  if (piece.is_again) {
    object.put("again", true);
  }
  if (piece.is_latin_1) {
    object.put("latin_1", true);
  }
  object.put("text", piece.text);
  return object;
}

std::vector<std::string> names_in(const json &object, std::string_view member) {
  std::vector<std::string> names;
  for (const json &each : elements_of(object, member)) {
    if (!each.is_string()) {
      refuse(fmt::format("'{}' holds no names", member));
    }
    names.push_back(each.as_string());
  }
  return names;
}

group_options groups_from(const json &object) {
  return {.become = text_in(object, "become"),
          .chosen = names_in(object, "chosen"),
          .are_split = is_true_in(object, "split"),
          .order = names_in(object, "order")};
}

json json_of_groups(const group_options &groups) {
  json object = {{"become", groups.become}};
  if (!groups.chosen.empty()) {
    object.put("chosen", json(groups.chosen));
  }
  if (groups.are_split) {
    object.put("split", true);
  }
  if (!groups.order.empty()) {
    object.put("order", json(groups.order));
  }
  return object;
}

source_text source_from(const json &object) {
  source_text made{.format = text_in(object, "format"), .files = {}};
  made.groups = object.contains("groups") ? groups_from(object["groups"]) : group_options();
  made.url = object.contains("url") ? text_in(object, "url") : std::string();
  for (const json &file : elements_of(object, "files")) {
    source_file &read = made.files.emplace_back();
    read.name = text_in(file, "name");
    read.encoding.charset = file.contains("charset") ? text_in(file, "charset") : std::string();
    read.encoding.has_mark = is_true_in(file, "mark");
    for (const json &piece : elements_of(file, "pieces")) {
      read.pieces.push_back(piece_from(piece));
    }
  }
  return made;
}

json json_of_file(const source_file &file) {
  json object = {{"name", file.name}};
  if (!file.encoding.charset.empty()) {
    object.put("charset", file.encoding.charset);
  }
  if (file.encoding.has_mark) {
    object.put("mark", true);
  }
  json pieces = json::array();
  for (const source_piece &piece : file.pieces) {
    pieces.push_back(json_of_piece(piece));
  }
  object.put("pieces", std::move(pieces));
  return object;
}

json json_of_source(const source_text &source) {
  json files = json::array();
  for (const source_file &each : source.files) {
    files.push_back(json_of_file(each));
  }
  json object = {{"format", source.format}};
  if (!source.url.empty()) {
    object.put("url", source.url);
  }
  if (source.groups != group_options()) {
    object.put("groups", json_of_groups(source.groups));
  }
  object.put("files", std::move(files));
  return object;
}

json document_from(std::string_view text) {
  try {
    return json::parse(text);
  } catch (const json_error &error) {
    refuse(std::string("is no JSON: ") + error.what());
  }
}

void must_be_of_schema(const json &document) {
  const json &value = member_of(document, "schema");
  if (!value.is_integer() || value.as_integer() != companion_schema) {
    refuse(fmt::format("is of schema {}: only {} is known", value.dump(), companion_schema));
  }
}

void must_be_small_enough(const fs::path &path) {
  if (fs::file_size(path) > largest_companion) {
    refuse(fmt::format("is larger than {} MiB", largest_companion >> 20U));
  }
}

std::string text_of_bytes(const fs::path &path) {
  const std::vector<std::byte> bytes = bytes_of_file(path);
  return {reinterpret_cast<const char *>(bytes.data()), bytes.size()};
}

}  // namespace

fs::path companion_of(const fs::path &file) { return behind_links(file).string() + std::string(companion_ending); }

std::string name_of_companion(const fs::path &file) {
  std::error_code unseen;
  return fs::is_symlink(file, unseen) ? companion_of(file).string() : file.string() + std::string(companion_ending);
}

companion companion_from(std::string_view text) {
  const json document = document_from(text);
  must_be_of_schema(document);
  companion made;
  made.file_sum = document.contains("file_sum") ? text_in(document, "file_sum") : std::string();
  for (const json &each : elements_of(document, "services")) {
    made.services.push_back(service_from(each));
  }
  if (const json *source = document.find("source")) {
    made.source = source_from(*source);
  }
  return made;
}

std::string text_of(const companion &of) {
  json services = json::array();
  for (const companion_service &each : of.services) {
    services.push_back(json_of_service(each));
  }
  json document = {{"schema", companion_schema}};
  if (!of.file_sum.empty()) {
    document.put("file_sum", of.file_sum);
  }
  document.put("services", std::move(services));
  if (!of.source.files.empty()) {
    document.put("source", json_of_source(of.source));
  }
  return document.dump(companion_indentation) + '\n';
}

std::string text_beside(companion of, std::string_view channel_file) {
  of.file_sum = fingerprint_of(channel_file);
  return text_of(of);
}

std::string text_of(const source_file &file) {
  std::string text;
  for (const source_piece &each : file.pieces) {
    text += each.text;
  }
  return text;
}

// What cannot be read at all is no matter of what it says: whoever asks goes no further.
std::optional<companion> companion_beside(const fs::path &file) {
  const fs::path path = companion_of(file);
  if (!fs::exists(path)) {
    return std::nullopt;
  }
  try {
    must_be_small_enough(path);
    companion made = companion_from(text_of_bytes(path));
    made.is_out_of_step = !made.file_sum.empty() && made.file_sum != fingerprint_of(text_of_bytes(behind_links(file)));
    return made;
  } catch (const bad_companion &error) {
    throw bad_companion(fmt::format("{}: {}", name_of_companion(file), error.what()));
  }
}

}  // namespace chlist
