/// The classes as a client is told of them, held against a list: a member that is misspelt, moved,
/// missing, or of other rights or another type than its clients were built for is a break.

#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <sstream>
#include <string>

#include "ombrix/ombrix.h"

namespace ombrix::testing {
namespace {

/// The members of each class, a line for each: "VendorCode String gl".
using Interfaces = std::map<std::string, std::string>;

Interfaces listed() {
  Interfaces classes;
  std::ifstream list(OMBRIX_INTERFACES);
  std::string type;
  std::string* members = nullptr;
  for (std::string word; list >> word;) {
    if (word == "#") {
      std::getline(list, word);
    } else if (word.starts_with("OmbrixPurchase.")) {
      members = &classes[word];
    } else if (word.back() == ':') {
      type = word.substr(0, word.size() - 1);
    } else {
      const auto end = word.find_first_of("/(");
      const std::string rights = end == std::string::npos ? "gl"
                                 : word[end] == '('       ? "c"
                                                          : word.substr(end + 1);
      members->append(word, 0, end).append(" " + type + " " + rights + "\n");
    }
  }
  return classes;
}

std::string members_of(const std::string& name) {
  std::string members;
  ombrix_handle object = 0;
  std::size_t count = 0;
  EXPECT_EQ(ombrix_create(name.c_str(), &object), OMBRIX_OK);
  EXPECT_EQ(ombrix_member_count(object, &count), OMBRIX_OK);
  for (std::size_t place = 0; place < count; ++place) {
    ombrix_member_info info{};
    EXPECT_EQ(ombrix_member(object, place, &info), OMBRIX_OK);
    EXPECT_EQ(info.number, static_cast<int>(place) + 1) << info.name;
    members.append(info.name).append(" ").append(info.type).append(" ");
    for (int right = 0; right < 4; ++right) {
      if ((info.access >> right & 1) != 0) members += "glsc"[right];
    }
    members += "\n";
  }
  ombrix_release(object);
  return members;
}

TEST(Interfaces, have_the_members_that_their_clients_know) {
  const Interfaces expected = listed();
  ombrix_value names{};
  ASSERT_EQ(ombrix_classes(&names), OMBRIX_OK);
  std::istringstream lines(names.as.text.bytes);
  std::size_t found = 0;
  for (std::string name; std::getline(lines, name);) {
    if (!name.starts_with("OmbrixPurchase.")) continue;
    ++found;
    ASSERT_TRUE(expected.contains(name)) << name;
    EXPECT_EQ(members_of(name), expected.at(name)) << name;
  }
  ombrix_clear(&names);
  EXPECT_EQ(found, expected.size());
}

}  // namespace
}  // namespace ombrix::testing
