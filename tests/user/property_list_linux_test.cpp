#include "user/property_list.h"

#include <gtest/gtest.h>
#include <plist/plist.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <limits>
#include <new>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tests/support/child_process.h"
#include "tests/support/process_limits.h"
#include "tests/support/sanitizers.h"

// Property lists as nobody's application writes them. The ordinary ones are in the tests of the preferences.

namespace halvane {
namespace {

using namespace std::string_literals;

std::string repeated(std::string_view text, std::size_t count) {
  std::string whole;
  for (; count > 0; --count) whole += text;
  return whole;
}

std::string xml(std::string_view content, std::string_view declarations = "") {
  return std::string(R"(<?xml version="1.0" encoding="UTF-8"?>)")
      .append(declarations)
      .append("<plist version=\"1.0\">")
      .append(content)
      .append("</plist>");
}

// The binary form, put together from objects as they stand in the file. All references and offsets take four
// bytes.
std::string binaryFormOf(const std::vector<std::string>& objects, std::uint32_t top = 0) {
  const auto number = [](std::uint64_t value, int size) {
    std::string bytes;
    for (int i = size - 1; i >= 0; --i) bytes += static_cast<char>(value >> (8 * i));
    return bytes;
  };
  std::string list = "bplist00";
  std::string table;
  for (const std::string& object : objects) {
    table += number(list.size(), 4);
    list += object;
  }
  const std::size_t tableAt = list.size();
  return list + table + std::string(6, '\0') + "\x04\x04" + number(objects.size(), 8) + number(top, 8) +
         number(tableAt, 8);
}

std::string references(const std::vector<std::uint32_t>& numbers) {
  std::string bytes;
  for (const std::uint32_t number : numbers)
    for (int i = 3; i >= 0; --i) bytes += static_cast<char>(number >> (8 * i));
  return bytes;
}

std::string counted(int kind, std::size_t count) {
  if (count < 0xF) return {static_cast<char>(kind << 4 | static_cast<int>(count))};
  std::string marker = {static_cast<char>(kind << 4 | 0xF), 0x12};
  return marker + references({static_cast<std::uint32_t>(count)});
}

std::string text(const std::string& ascii) {
  return counted(0x5, ascii.size()) + ascii;
}

const PropertyTexts journalAtJ = {{"journalRoot", "/j"}};

// The processor time that it takes to read `list` so many times, at the least of a few trials.
std::clock_t timeToRead(const std::string& list, int times = 1) {
  std::clock_t least = std::numeric_limits<std::clock_t>::max();
  for (int i = 0; i < 3; ++i) {
    const std::clock_t before = std::clock();
    for (int time = 0; time < times; ++time) textsOfPropertyList(list);
    least = std::min(least, std::clock() - before);
  }
  return least;
}

// To read a list that is `times` times as long takes about as long as to read the shorter one so many times.
// In proportion to the square, it would take that many times longer. There is room between the two for a
// machine that has other work.
void expectProportion(const std::string& list, const std::string& longer, int times,
                      const char* description) {
  EXPECT_LT(timeToRead(longer), timeToRead(list, times) * times / 4) << description;
}

TEST(XmlPropertyList, IsReadInTimeInProportionToItsSize) {
  const std::string journal = "<key>journalRoot</key><string>/j</string>";
  // Far apart: what the kernel does to provide the memory can double the ratio by itself.
  constexpr int times = 64;
  constexpr std::size_t size = 2'500;
  const auto names = [](std::size_t count) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i) text += "<key>" + std::to_string(i) + "</key><true/>";
    return text;
  };
  struct Case {
    const char* description;
    std::function<std::string(std::size_t)> content;
  };
  for (const Case& c : {
           Case{"nested deeply",
                [](std::size_t count) {
                  return "<key>a</key>" + repeated("<array>", count) + repeated("</array>", count);
                }},
           Case{"a long array",
                [](std::size_t count) {
                  return "<key>a</key><array>" + repeated("<true/>", 3 * count) + "</array>";
                }},
           Case{"many names", names},
           Case{"many escapes",
                [](std::size_t count) {
                  return "<key>a</key><data>" + repeated("&amp;", 4 * count) + "</data>";
                }},
           Case{"many comments", [](std::size_t count) { return repeated("<!-- x -->", 2 * count); }},
       }) {
    const auto list = [&](std::size_t count) {
      return xml("<dict>" + c.content(count) + journal + "</dict>");
    };
    EXPECT_EQ(textsOfPropertyList(list(times * size)), journalAtJ) << c.description;
    expectProportion(list(size), list(times * size), times, c.description);
  }
}

// All the memory that this process can have, given back bit by bit.
class HoardedMemory {
 public:
  HoardedMemory() {
    limitFurtherMemory(std::size_t{8} << 20);
    for (const std::size_t size : {65536U, 4096U, 512U, 32U}) {
      while (void* const memory = std::malloc(size)) last_ = new (memory) Block{last_};
    }
  }
  // The smallest block that is left; false when none is.
  bool giveBackOne() {
    if (last_ == nullptr) return false;
    std::free(std::exchange(last_, last_->before));
    return true;
  }

 private:
  struct Block {
    Block* before;
  };
  Block* last_ = nullptr;
};

// How a list that holds `texts` is read while there is ever more memory.
std::string readingWhereMemoryIsShort(const std::string& list, const PropertyTexts& texts) {
  return inChildProcess([&]() -> std::string {
    HoardedMemory memory;
    bool isRead = false;
    bool isRight = false;
    int refusals = 0;
    do {
      try {
        isRight = textsOfPropertyList(list) == texts;
        isRead = true;
      } catch (const std::bad_alloc&) {
        ++refusals;
      }
    } while (!isRead && memory.giveBackOne());
    while (memory.giveBackOne()) continue;
    if (!isRead) return "never read";
    return (isRight ? "read" : "misread") + std::string(refusals > 10 ? " in the end" : " at once");
  });
}

// The settings would seem not to name the journal, and another folder would be taken for it.
TEST(PropertyList, IsNotTakenForNoneWhereMemoryIsShort) {
  if (underAddressSanitizer) GTEST_SKIP() << "the sanitizer's own memory leaves no room for a limit";
  const std::string folder(200000, 'j');
  const std::string wide = repeated(std::string("\0j", 2), folder.size());
  for (const std::string& list :
       {xml("<dict><key>journalRoot</key><string>" + folder + "</string><key>other</key><true/></dict>"),
        binaryFormOf({"\xD1" + references({1, 2}), text("journalRoot"), text(folder)}),
        binaryFormOf({"\xD1" + references({1, 2}), text("journalRoot"), counted(0x6, folder.size()) + wide})})
    EXPECT_EQ(readingWhereMemoryIsShort(list, {{"journalRoot", folder}}), "read in the end")
        << testing::PrintToString(list.substr(0, 30));
}

TEST(XmlPropertyList, MayDeclareNoEntities) {
  const std::string content = "<dict><key>journalRoot</key><string>/&a;</string></dict>";
  for (const char* declarations : {R"(<!DOCTYPE plist [<!ENTITY a "j">]>)",
                                   R"(<!DOCTYPE plist [<!ENTITY a SYSTEM "file:///etc/hostname">]>)",
                                   R"(<!DOCTYPE plist [<!ENTITY % a "j">]>)"})
    EXPECT_EQ(textsOfPropertyList(xml(content, declarations)), std::nullopt) << declarations;
  EXPECT_EQ(textsOfPropertyList(xml("<dict><key>journalRoot</key><string>&#47;j</string></dict>")),
            journalAtJ);
}

TEST(XmlPropertyList, MayNameADocumentTypeThatNobodyFetches) {
  EXPECT_EQ(
      textsOfPropertyList(xml("<dict><key>journalRoot</key><string>/j</string></dict>",
                              R"(<!DOCTYPE plist PUBLIC "-//Example//DTD" "http://localhost/none.dtd">)")),
      journalAtJ);
}

TEST(XmlPropertyList, IsNoneWithoutItsOrder) {
  for (const char* content :
       {"<dict><string>/j</string></dict>", "<dict><key>a</key></dict>",
        "<dict><key>a</key><key>b</key><string>/j</string></dict>", "<dict></dict><dict></dict>",
        "<dict><key>a<b/></key><string>/j</string></dict>",
        "<dict><key>a</key><string>/<b/>j</string></dict>", "", "<array/>", "<dict/><array/>",
        "<dict><key>a</key><string>\xFF</string></dict>"})
    EXPECT_EQ(textsOfPropertyList(xml(content)), std::nullopt) << content;
  EXPECT_EQ(textsOfPropertyList("<dict><key>a</key><string>b</string></dict>"), std::nullopt);
  EXPECT_EQ(textsOfPropertyList(xml("<dict/>")), PropertyTexts{});
}

TEST(XmlPropertyList, OfANameThatOccursTwiceTheLastValueCounts) {
  const std::string first = "<key>a</key><string>1</string>";
  EXPECT_EQ(textsOfPropertyList(xml("<dict>" + first + "<key>a</key><string>2</string></dict>")),
            (PropertyTexts{{"a", "2"}}));
  EXPECT_EQ(textsOfPropertyList(xml("<dict>" + first + "<key>a</key><true/></dict>")), PropertyTexts{});
}

TEST(BinaryPropertyList, HoldsNamesAndTexts) {
  EXPECT_EQ(textsOfPropertyList(binaryFormOf({"\xD1" + references({1, 2}), text("journalRoot"), text("/j")})),
            journalAtJ);
}

TEST(BinaryPropertyList, HoldsTextsInUtf16) {
  struct Case {
    std::u16string units;
    std::string text;
  };
  const std::u16string first = u"\xD83D";
  const std::u16string second = u"\xDE00";
  for (const Case& c :
       {Case{u"", ""}, Case{u"jé日", "jé日"}, Case{first + second, "😀"},
        Case{u"\xD800\xDC00\xDBFF\xDFFF", "\U00010000\U0010FFFF"}, Case{u"\xD7FF\xE000", "\uD7FF\uE000"},
        // Half a pair of surrogates is no character.
        Case{first, "\uFFFD"}, Case{second, "\uFFFD"}, Case{first + u"j", "\uFFFDj"},
        Case{second + first, "\uFFFD\uFFFD"}, Case{first + first + second, "\uFFFD😀"}}) {
    std::string wide = counted(0x6, c.units.size());
    for (const char16_t unit : c.units) wide.append({static_cast<char>(unit >> 8), static_cast<char>(unit)});
    // What follows would make a pair of the last unit.
    EXPECT_EQ(textsOfPropertyList(binaryFormOf({"\xD1" + references({1, 2}), text("a"), wide, "\xDE\x00"s})),
              (PropertyTexts{{"a", c.text}}));
  }
}

TEST(BinaryPropertyList, TakesNoTextOfBytesThatIsNotAscii) {
  for (const auto& [value, texts] :
       {std::pair(text("\x7F"), PropertyTexts{{"a", "\x7F"}}), std::pair(text("\x80"), PropertyTexts{}),
        std::pair(text("\xC3\xA9"), PropertyTexts{})})
    EXPECT_EQ(textsOfPropertyList(binaryFormOf({"\xD1" + references({1, 2}), text("a"), value})), texts)
        << value;
}

TEST(BinaryPropertyList, TakesNoTextThatWouldReachBeyondItsEnd) {
  // Of the 46 bytes from the first character on, 12 are the table's and 32 the trailer's.
  for (const int count : {24, 40, 47}) {
    const std::string reaching{'\x6F', '\x10', static_cast<char>(count), '\0', 'j'};
    EXPECT_EQ(textsOfPropertyList(binaryFormOf({"\xD1" + references({1, 2}), text("a"), reaching})),
              PropertyTexts{})
        << count;
  }
}

TEST(BinaryPropertyList, MayReferToItselfAndToTheSameAgainAndAgain) {
  std::vector<std::string> objects = {"\xD2" + references({1, 2, 3, 4}), text("journalRoot"), text("again"),
                                      text("/j")};
  for (std::uint32_t i = 4; i < 100; ++i) objects.push_back("\xA3" + references({i + 1, i + 1, 0}));
  objects.push_back(text("end"));
  EXPECT_EQ(textsOfPropertyList(binaryFormOf(objects)), journalAtJ);
}

TEST(BinaryPropertyList, OfANameThatOccursTwiceTheLastValueCounts) {
  const std::vector<std::string> objects = {text("a"),
                                            text("1"),
                                            text("2"),
                                            "\x09",
                                            "\xD2" + references({0, 0, 1, 2}),
                                            "\xD2" + references({0, 0, 1, 3})};
  EXPECT_EQ(textsOfPropertyList(binaryFormOf(objects, 4)), (PropertyTexts{{"a", "2"}}));
  EXPECT_EQ(textsOfPropertyList(binaryFormOf(objects, 5)), PropertyTexts{});
}

TEST(BinaryPropertyList, HoldsNoMoreTextThanItCouldBeMeantTo) {
  constexpr std::uint32_t count = 100'000;
  std::vector<std::uint32_t> numbers(count, 1);
  numbers.resize(2 * count, 2);
  const std::vector<std::string> objects = {counted(0xD, count) + references(numbers), text("a"),
                                            text(std::string(1 << 20, 'x'))};
  EXPECT_EQ(textsOfPropertyList(binaryFormOf(objects)), std::nullopt);

  constexpr std::size_t most = (64 << 20) - 1;  // beside the one character of the name
  for (const std::size_t length : {most, most + 1}) {
    const auto texts = textsOfPropertyList(
        binaryFormOf({"\xD1" + references({1, 2}), text("a"), text(std::string(length, 'x'))}));
    EXPECT_EQ(texts.has_value(), length == most);
  }
}

// One that names a long text again and again, which at its last byte turns out to be none.
TEST(BinaryPropertyList, LooksAtALongTextOnlySoManyTimes) {
  constexpr std::size_t length = 8 << 20;
  const auto list = [](std::uint32_t count) {
    std::vector<std::uint32_t> numbers(count, 1);
    numbers.resize(2 * count, 2);
    return binaryFormOf({counted(0xD, count) + references(numbers), text("a"),
                         counted(0x5, length) + std::string(length - 1, 'x') + "\xFF"});
  };
  EXPECT_EQ(textsOfPropertyList(list(2)), PropertyTexts{});
  EXPECT_LT(timeToRead(list(2000), 4), 5 * timeToRead(list(20), 4));
}

TEST(BinaryPropertyList, IsNoneWhereItSaysWhatCannotBe) {
  const std::string name = text("a");
  for (const std::string& list :
       {binaryFormOf({"\xD1" + references({1, 9}), name}),
        binaryFormOf({"\xD1" + references({1, 2}), name,
                      "\x5E"
                      "short"},
                     7),
        binaryFormOf({"\xDE" + references({1, 1}), name}), binaryFormOf({counted(0xD, 0xFFFFFFFF), name}),
        binaryFormOf({std::string("\xDF\x13\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF", 10), name}),
        binaryFormOf({"\xDF\x14", name}), binaryFormOf({"\xDF", name}),
        // What follows the marker of a long text must be the number of its characters.
        binaryFormOf({"\xD1" + references({1, 2}), name, "\x5F\x33" + std::string(40, 'x')}),
        binaryFormOf({"\xD1" + references({1, 2}), name, "\x6F\x33" + std::string(40, 'x')}),
        binaryFormOf({"\xD1" + references({1, 1}), "\x09"}), binaryFormOf({name}), binaryFormOf({}),
        std::string("bplist00") + std::string(32, '\xFF'), std::string("bplist00") + std::string(32, '\0')})
    EXPECT_EQ(textsOfPropertyList(list), std::nullopt) << testing::PrintToString(list);
}

// In a number, a date or bytes, the lower half of the marker may be anything.
TEST(BinaryPropertyList, LeavesOutValuesOfOtherKindsWhateverTheirMarkers) {
  for (const char* value : {"\x0F", "\x1F", "\x2F", "\x3F", "\x4F", "\x8F", "\xAF", "\xCF", "\xFF"})
    EXPECT_EQ(textsOfPropertyList(binaryFormOf({"\xD1" + references({1, 2}), text("a"), value})),
              PropertyTexts{})
        << testing::PrintToString(value);
}

TEST(BinaryPropertyList, HasNoMoreObjectsThanBytes) {
  std::string list = binaryFormOf({"\xD1" + references({1, 2}), text("journalRoot"), text("/j")});
  char& lastOfCount = list[list.size() - 17];
  lastOfCount = static_cast<char>(list.size());
  EXPECT_EQ(textsOfPropertyList(list), journalAtJ);
  lastOfCount = static_cast<char>(list.size() + 1);
  EXPECT_EQ(textsOfPropertyList(list), std::nullopt);
}

// Lists that another library writes, unchanged and with random bytes changed.
TEST(BinaryPropertyList, SurvivesChangesByChance) {
  plist_t list = plist_new_dict();
  plist_dict_set_item(list, "journalRoot", plist_new_string("/j"));
  plist_dict_set_item(list, "ključ", plist_new_string("日記"));
  plist_dict_set_item(list, "count", plist_new_uint(70'000));
  char* bytes = nullptr;
  std::uint32_t size = 0;
  plist_to_bin(list, &bytes, &size);
  const std::string whole(bytes, size);
  std::free(bytes);
  plist_free(list);
  ASSERT_EQ(textsOfPropertyList(whole), (PropertyTexts{{"journalRoot", "/j"}, {"ključ", "日記"}}));

  std::mt19937 chance(1);
  int read = 0;
  for (int i = 0; i < 100'000; ++i) {
    std::string changed = whole;
    for (std::uint32_t count = 1 + chance() % 4; count > 0; --count)
      changed[8 + chance() % (changed.size() - 8)] = static_cast<char>(chance());
    read += textsOfPropertyList(changed) ? 1 : 0;
  }
  EXPECT_GT(read, 1000) << "most changes are in a text";
}

}  // namespace
}  // namespace halvane
