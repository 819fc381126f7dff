#include "doctor/report.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <utility>
#include <vector>

#include "doctor/advice.h"
#include "text/text.h"
#include "text/utf8.h"
#include "tools/date_style.h"
#include "user/dates.h"
#include "user/user_locale.h"

namespace halvane {
namespace {

// Lays out a report line by line.
class Page {
 public:
  explicit Page(bool colour) : colour_(colour) {}

  void heading(std::string_view text) {
    if (!text_.empty()) text_ += '\n';
    write(bold, text);
  }
  void line(std::string_view text) { text_.append("  ").append(text).append("\n"); }
  void attention(std::string_view text) {
    ++attentions_;
    write(red, "! " + std::string(text));
  }
  Report finished() {
    text_ += '\n';
    if (attentions_ == 0) {
      text_.append("All is well.\n");
    } else {
      text_.append("Lines that need attention, marked with \"!\": ")
          .append(std::to_string(attentions_))
          .append("\n");
    }
    return {std::move(text_), attentions_ == 0};
  }

 private:
  static constexpr std::string_view bold = "\x1B[1m";
  static constexpr std::string_view red = "\x1B[31m";
  static constexpr std::string_view plain = "\x1B[0m";

  void write(std::string_view style, std::string_view text) {
    if (colour_) text_.append(style);
    text_.append(text);
    if (colour_) text_.append(plain);
    text_ += '\n';
  }

  bool colour_;
  std::string text_;
  std::size_t attentions_ = 0;
};

// A path to show. A file's name may hold what a terminal would obey.
std::string shown(std::string_view path) {
  const std::string text = repairUtf8(path);
  std::string harmless;
  for (std::size_t at = 0; at < text.size();) {
    const char32_t character = nextCodePoint(text, at);
    const bool isControl = character < 0x20 || (character >= 0x7F && character < 0xA0);
    appendCodePoint(harmless, isControl ? U'\uFFFD' : character);
  }
  return harmless;
}

void describe(const SettingsWithoutRoot& settings, Page& page) {
  if (!settings.file) return;  // the system keeps them, and has told that they name no journal
  const std::string place = shown(*settings.file);
  switch (settings.cause) {
    case SettingsWithoutRoot::Cause::absent:
      return page.line(place + ": not found.");
    case SettingsWithoutRoot::Cause::nameNone:
      return page.line(place + ": there is no text under the key journalRoot.");
    case SettingsWithoutRoot::Cause::unreadable:
      return page.attention(place + ": can't be read: " + settings.error.message());
    case SettingsWithoutRoot::Cause::damaged:
      return page.attention(place + ": not a property list, or longer than 16 MiB.");
  }
}

void describeLocation(const Examination& examination, Page& page) {
  const JournalLocation& location = examination.location;
  page.heading("Where the journal is");
  page.line(shown(location.root.path));
  if (location.namedBy) {
    page.line("The preferences of " + *location.namedBy + " name this folder.");
  } else {
    page.line("This is the default folder: no preferences name another.");
  }
  for (const SettingsWithoutRoot& settings : examination.settingsWithoutRoot) describe(settings, page);
}

std::string_view inWords(Refusal why) {
  switch (why) {
    case Refusal::notUtf8:
      return "it is not UTF-8 text.";
    case Refusal::carriageReturns:
      return "its lines end in CR LF, as on Windows; the --- lines and the date must end in LF.";
    case Refusal::noFrontMatter:
      return "it has no front matter: its first line must be --- and nothing else.";
    case Refusal::noClosingLine:
      return "its front matter has no closing line: a second line --- is missing.";
    case Refusal::noDate:
      return "it has no date in its front matter.";
    case Refusal::badDate:
      return "its date must look like 2025-03-16T12:15:00+01:00, without quotes, on a day that exists.";
  }
  return {};
}

std::string reasonFor(const LeftOut& leftOut) {
  if (leftOut.why) return std::string(inWords(*leftOut.why));
  if (leftOut.error) return "it can't be read: " + leftOut.error.message();
  return "it can't be read to its end, or it is not a regular file.";
}

void describeLeftOut(const Examination& examination, Page& page) {
  std::string_view root = examination.location.root.path;
  if (root.ends_with('/')) root.remove_suffix(1);
  for (const LeftOut& leftOut : examination.leftOut) {
    const std::string_view below = std::string_view(leftOut.path).substr(root.size() + 1);
    page.attention(shown(below) + ": " + reasonFor(leftOut));
  }
}

void describeCloud(const CloudFiles& files, Page& page) {
  if (files.placeholders > 0) {
    page.attention("Entries that iCloud Drive has not downloaded: " + std::to_string(files.placeholders) +
                   ". The server can't see them.");
    page.line(
        "In the Finder, control-click the journal's folder and choose Keep Downloaded or Download Now.");
  }
  if (files.withoutContent > 0) {
    page.line("Files that were in iCloud Drive alone: " + std::to_string(files.withoutContent) +
              ". Reading them waits for their download.");
  }
}

void describeContent(const Examination& examination, Page& page) {
  page.heading("What is in it");
  if (examination.error) {
    page.attention("It can't be read: " + examination.error.message());
    if (examination.error == std::errc::no_such_file_or_directory)
      page.line("If your journal is elsewhere, set the preference journalRoot to its folder.");
  } else {
    page.line("It can be read.");
    page.line("Files whose names end in .md: " + std::to_string(examination.files));
    page.line("Entries among them: " + std::to_string(examination.entries));
    if (examination.entries == 0) page.attention("The server finds no entries.");
    describeLeftOut(examination, page);
    describeCloud(examination.inTheCloud, page);
  }
  if (const std::string more = advice(examination.error); !more.empty()) page.line(more);
}

// The distance of the user's clocks from UTC at `moment`, such as UTC+01:00.
std::string offsetInWords(Instant moment) {
  const auto minutes = static_cast<int>(utcOffset(moment) / std::chrono::minutes(1));
  std::array<char, 32> text;
  const int length = std::snprintf(text.data(), text.size(), "UTC%c%02d:%02d", minutes < 0 ? '-' : '+',
                                   std::abs(minutes) / 60, std::abs(minutes) % 60);
  return {text.data(), static_cast<std::size_t>(length)};
}

void describeDates(Page& page) {
  const Instant present = now();
  page.heading("How dates are shown");
  page.line("Now it is " + dateStyle.words().of(present) + ".");
  page.line("The locale is " + userLocale() + ", the time zone " + offsetInWords(present) + ".");
}

void describeTags(const Examination& examination, Page& page) {
  if (examination.tags.empty()) return;
  using Tag = std::pair<std::string, std::size_t>;
  std::vector<Tag> tags(examination.tags.begin(), examination.tags.end());
  std::stable_sort(tags.begin(), tags.end(),
                   [](const Tag& left, const Tag& right) { return left.second > right.second; });
  const std::size_t width = std::to_string(tags.front().second).size();
  page.heading("Tags, and how many entries have each");
  for (const auto& [tag, count] : tags) {
    const std::string number = std::to_string(count);
    page.line(std::string(width - number.size(), ' ').append(number).append("  ").append(tag));
  }
}

void describeSandbox(const Examination& examination, Page& page) {
  if (examination.notRefused.empty()) return;
  page.heading("What the system does not keep this program and the server from");
  page.line(examination.notRefused);
}

}  // namespace

Report reportOn(const Examination& examination, bool colour) {
  Page page(colour);
  describeLocation(examination, page);
  describeContent(examination, page);
  describeDates(page);
  describeTags(examination, page);
  describeSandbox(examination, page);
  return page.finished();
}

}  // namespace halvane
