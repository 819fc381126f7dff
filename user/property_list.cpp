#include "user/property_list.h"

#include <expat.h>

#include <memory>
#include <new>
#include <utility>

// The XML form. A list may be nested to any depth and have any length. We keep only the names and texts of
// the outermost dictionary. The rest has to be well-formed.

namespace halvane {
namespace {

using Parser = std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)>;

class XmlList {
 public:
  std::optional<PropertyTexts> read(std::string_view file) {
    const Parser parser(XML_ParserCreate(nullptr), &XML_ParserFree);
    if (!parser) throw std::bad_alloc();
    parser_ = parser.get();
    XML_SetUserData(parser_, this);
    XML_SetElementHandler(parser_, &onBegin, &onEnd);
    XML_SetCharacterDataHandler(parser_, &onCharacters);
    XML_SetEntityDeclHandler(parser_, &onEntity);
    const XML_Status status = XML_Parse(parser_, file.data(), static_cast<int>(file.size()), XML_TRUE);
    if (outOfMemory_ || XML_GetErrorCode(parser_) == XML_ERROR_NO_MEMORY) throw std::bad_alloc();
    if (status != XML_STATUS_OK || !complete_) return std::nullopt;
    return std::move(texts_);
  }

 private:
  // The depth of an element that has a meaning for us.
  static constexpr std::size_t list = 1, dictionary = 2, item = 3;

  void begin(std::string_view name) {
    ++depth_;
    if (depth_ == list && name != "plist") refuse();
    if (depth_ == dictionary && (name != "dict" || complete_)) refuse();
    if (depth_ == item) {
      isName_ = name == "key";
      isText_ = name == "string";
      if (isName_ == name_.has_value()) refuse();
    }
    if (depth_ == item + 1 && (isName_ || isText_)) refuse();
  }

  void end() {
    if (depth_ == item && isName_) {
      name_ = std::exchange(text_, {});
    } else if (depth_ == item) {
      if (isText_) {
        texts_.insert_or_assign(*name_, std::exchange(text_, {}));
      } else {
        texts_.erase(*name_);
      }
      name_.reset();
    } else if (depth_ == dictionary) {
      if (name_) refuse();
      complete_ = true;
    }
    --depth_;
  }

  void characters(std::string_view text) {
    if (depth_ == item && (isName_ || isText_)) text_ += text;
  }

  void refuse() { XML_StopParser(parser_, XML_FALSE); }

  // No exception may cross the parser, which is written in C. A stopped parser still reports the end of an
  // empty element, so from then on we do nothing.
  template <typename Event>
  static void handle(void* self, Event event) {
    auto& reader = *static_cast<XmlList*>(self);
    XML_ParsingStatus status;
    XML_GetParsingStatus(reader.parser_, &status);
    if (status.parsing == XML_FINISHED) return;
    try {
      event(reader);
    } catch (const std::bad_alloc&) {
      reader.outOfMemory_ = true;
      reader.refuse();
    }
  }
  static void onBegin(void* self, const XML_Char* name, const XML_Char**) {
    handle(self, [=](XmlList& reader) { reader.begin(name); });
  }
  static void onEnd(void* self, const XML_Char*) {
    handle(self, [](XmlList& reader) { reader.end(); });
  }
  static void onCharacters(void* self, const XML_Char* text, int length) {
    handle(self, [=](XmlList& reader) { reader.characters({text, static_cast<std::size_t>(length)}); });
  }
  static void onEntity(void* self, const XML_Char*, int, const XML_Char*, int, const XML_Char*,
                       const XML_Char*, const XML_Char*, const XML_Char*) {
    handle(self, [](XmlList& reader) { reader.refuse(); });
  }

  XML_Parser parser_ = nullptr;
  PropertyTexts texts_;
  std::size_t depth_ = 0;
  bool isName_ = false;
  bool isText_ = false;
  bool complete_ = false;
  bool outOfMemory_ = false;
  std::optional<std::string> name_;  // the name whose value is still to come
  std::string text_;
};

}  // namespace

std::optional<PropertyTexts> textsOfPropertyList(std::string_view list) {
  return list.starts_with("bplist") ? textsOfBinaryPropertyList(list) : XmlList().read(list);
}

}  // namespace halvane
