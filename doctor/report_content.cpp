#include <map>
#include <string>
#include <string_view>

#include "doctor/advice.h"
#include "doctor/date_line.h"
#include "doctor/report_sections.h"

namespace halvane {
namespace {

// If more files than this have the same reason, the report names only the first few.
constexpr std::size_t mostNamed = 20;
constexpr std::size_t firstFew = 5;

std::string inWords(Refusal why) {
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
      return "its date must look like 2025-03-16T12:15:00+01:00, without quotes or a fraction of a second, "
             "on a day that exists.";
  }
  return {};
}

std::string inWords(Trouble why) {
  switch (why) {
    case Trouble::notReadToItsEnd:
      return "it can't be read to its end, or it is not a regular file.";
    case Trouble::notRegular:
      return "it is not a regular file.";
    case Trouble::linkToFolder:
      return "it is a link to a folder, which the server does not enter.";
    case Trouble::otherExtension:
      return "the server does not read it: its name must end in .md, in small letters.";
    case Trouble::noTag:
      return "it is an entry without tags: its tags line must look like tags: work, garden; "
             "each tag has at most 30 characters.";
  }
  return {};
}

std::string inWords(const std::error_code& error) {
  return "it can't be read: " + error.message();
}

std::string reasonFor(const Finding& finding) {
  return std::visit([](const auto& why) { return inWords(why); }, finding.why);
}

// The name below the journal folder `root`.
std::string nameOf(const Finding& finding, std::string_view root) {
  std::string_view below = std::string_view(finding.path).substr(root.size());
  if (below.starts_with('/')) below.remove_prefix(1);
  return std::string(below.empty() ? "The folder itself" : below);
}

void describeFindings(const Examination& examination, Page& page) {
  std::map<std::string, std::size_t> total;
  for (const Finding& finding : examination.findings) ++total[reasonFor(finding)];
  std::map<std::string, std::size_t> named;
  for (const Finding& finding : examination.findings) {
    const std::string reason = reasonFor(finding);
    const std::size_t number = ++named[reason];
    if (total[reason] > mostNamed && number > firstFew) continue;
    page.attention(nameOf(finding, examination.location.root.path) + ": " + reason);
  }
  for (const auto& [reason, count] : total) {
    if (count > mostNamed) page.attention(std::to_string(count - firstFew) + " more like these: " + reason);
  }
}

void describeCloud(const CloudFiles& files, Page& page) {
  if (files.placeholders > 0) {
    page.attention("Entries that iCloud Drive has not downloaded: " + std::to_string(files.placeholders) +
                   ". The server can't see them.");
    page.line("In the Finder, control-click the journal folder and choose Keep Downloaded or Download Now.");
  }
  if (files.withoutContent > 0) {
    page.line(
        "Files that were only in iCloud Drive before this report: " + std::to_string(files.withoutContent) +
        ". The server waits for the download when it reads such a file.");
  }
}

void describeEntries(const Examination& examination, Page& page) {
  page.line("Files whose names end in .md: " + std::to_string(examination.files));
  page.line("Entries among them: " + std::to_string(examination.entries));
  if (examination.entries == 0) return page.attention("The server finds no entries.");
  page.line("The oldest entry: " + dateInWords(examination.oldest));
  page.line("The newest entry: " + dateInWords(examination.newest));
  if (examination.inFuture > 0) {
    page.line("Entries dated in the future, which list_recent always shows: " +
              std::to_string(examination.inFuture));
  }
}

}  // namespace

void describeContent(const Examination& examination, Page& page) {
  page.heading("What is in the journal folder");
  if (examination.error) {
    page.attention("The folder can't be read: " + examination.error.message());
    if (examination.error == std::errc::no_such_file_or_directory) {
      page.line(
          "If your journal is elsewhere, name its folder under the key journalRoot in Halvane's "
          "preferences.");
    }
  } else {
    page.line("The folder can be read.");
    describeEntries(examination, page);
    describeFindings(examination, page);
    describeCloud(examination.inTheCloud, page);
  }
  if (const std::string more = advice(examination.error); !more.empty()) page.line(more);
}

}  // namespace halvane
