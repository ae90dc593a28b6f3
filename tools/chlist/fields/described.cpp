// Identities go by their table.
#include "chlist/fields/described.h"

#include <channel/views.h>
#include <fmt/format.h>

#include "chlist/position.h"
#include "chlist/text/shown.h"

namespace chlist {

std::string describe(const known_service &service) {
  return fmt::format("{} ({})", shown(service.name), text_of(service.id));
}

std::string describe(const placed_entry &entry) {
  return fmt::format("the {} view, position {}: number {} ({})", label_of(entry.view), position_of(entry.index),
                     entry.number, text_of(entry.id));
}

json json_of(const view_name &view) {
  json object = {{"view", view.kind}};
  if (view.is_favourites()) {
    object["group"] = position_of(view.group);
    object["group_name"] = view.group_name;
  }
  return object;
}

json json_of(const known_service &service) {
  json object = {{"name", service.name}};
  put_fields(object, identity_fields(), service.id);
  return object;
}

json json_of(const placed_entry &entry) {
  json object = json_of(entry.view);
  object["position"] = position_of(entry.index);
  object["number"] = entry.number;
  put_fields(object, identity_fields(), entry.id);
  return object;
}

json json_of_transponder(const channel::identity &id) {
  return json_of_fields(identity_fields(identity_part::transponder), id);
}

json json_of_views() {
  json views = json::array();
  for (const list_view &view : views_of(*get_channel_list())) {
    json object = json_of(view.name);
    object["count"] = view.size();
    views.push_back(object);
  }
  return views;
}

}  // namespace chlist
