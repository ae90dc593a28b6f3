// A list of five services for tests of bouquets, and the order and the favourites of a list in short.
#pragma once

#include <channel/channel.h>
#include <gtest/gtest.h>

#include <string>

#include "tool/exchange/enigma2/lamedb_folder.h"

namespace tool_test::enigma2 {

using chlist::channel_number;
using chlist::favourite_group;

// Services 1 to 5, of which 4 and 5 are radio.
inline line_up five() {
  line_up list = list_of({plain_service(1), plain_service(2), plain_service(3), plain_service(4), plain_service(5)});
  list.services[3].fields.service_type = SERVICE_TYPE_RADIO;
  list.services[4].fields.service_type = SERVICE_TYPE_RADIO;
  for (int i = 0; i < 5; ++i) {
    list.services[static_cast<std::size_t>(i)].number = channel_number{i + 1};
  }
  return list;
}

// "A1=1 A2=2 A3"
inline std::string order_of(const line_up &list) {
  std::string text;
  for (const line_up_service &service : list.services) {
    text += (text.empty() ? "" : " ") + service.name;
    text += service.number ? "=" + std::to_string(service.number->major) : "";
  }
  return text;
}

// "Name: A1 A2"
inline std::string favourites_of(const line_up &list, const favourite_group &group) {
  std::string text = group.name + ":";
  for (const chlist::line_up_entry &entry : group.entries) {
    text += " " + list.services.at(entry.service).name;
  }
  return text;
}

inline texts favourites_of(const line_up &list) {
  texts groups;
  for (const favourite_group &group : list.favourites) {
    groups.push_back(favourites_of(list, group));
  }
  return groups;
}

}  // namespace tool_test::enigma2
