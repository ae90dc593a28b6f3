// What names and types tell of the picture.
#include "chlist/compare/quality.h"

#include <gtest/gtest.h>

namespace {

using chlist::is_radio;
using chlist::picture;
using chlist::picture_of;
using chlist::plain_name;

chlist::line_up_service named(const std::string &name, std::uint8_t type = SERVICE_TYPE_TV) {
  chlist::line_up_service service;
  service.name = name;
  service.fields.service_type = type;
  return service;
}

TEST(Quality, NamesAreTheSameWithoutTheWordsForThePicture) {
  for (const char *name : {"News", "NEWS HD", "News  hd ", "News UHD 4K", "News SD"}) {
    EXPECT_EQ(plain_name(name), "news") << name;
  }
}

TEST(Quality, WordsWithinANameAndNamesOfOneWordStay) {
  EXPECT_EQ(plain_name("HD"), "hd");
  EXPECT_EQ(plain_name(" HD"), " hd");
  EXPECT_EQ(plain_name("Ahd"), "ahd");
  EXPECT_EQ(plain_name("HD Sport"), "hd sport");
  EXPECT_EQ(plain_name("HD HD"), "hd");
  EXPECT_EQ(plain_name(""), "");
}

TEST(Quality, TheNameTellsThePictureOrElseTheTypeDoes) {
  EXPECT_EQ(picture_of(named("News")), picture::standard);
  EXPECT_EQ(picture_of(named("News FHD")), picture::high);
  EXPECT_EQ(picture_of(named("News HD 8K")), picture::ultra_high);
  EXPECT_EQ(picture_of(named("News", 0x19)), picture::high);
  EXPECT_EQ(picture_of(named("News", 0x1F)), picture::ultra_high);
  EXPECT_EQ(picture_of(named("News SD", 0x19)), picture::standard);
}

TEST(Quality, RadioIsToldByTheType) {
  EXPECT_TRUE(is_radio(named("News", SERVICE_TYPE_RADIO)));
  EXPECT_TRUE(is_radio(named("News", 0x0A)));
  EXPECT_FALSE(is_radio(named("News")));
  EXPECT_FALSE(is_radio(named("News Radio", 0x0C)));
}

}  // namespace
