// Reads the tags of a page one after the other, in one pass over hostile bytes.
// No document is built; texts, comments and scripts are skipped.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace varnowick {

struct HtmlTag {
  struct Attribute {
    std::string name;        // in lower case
    std::string_view value;  // as it stands, without its quotes
  };
  std::string name;  // in lower case; of an end tag with its slash
  std::vector<Attribute> attributes;

  // Of the first attribute with that name; empty when there is none.
  std::string_view value(std::string_view attribute) const;
};

class HtmlTagReader {
 public:
  // The page must outlive the reader.
  explicit HtmlTagReader(std::string_view page) : page_(page) {}
  // False at the end, which a tag that is cut off is too.
  bool next(HtmlTag& tag);

 private:
  void skipPast(std::string_view end);
  void skipElement(std::string_view name);
  bool readTag(HtmlTag& tag);
  bool readAttribute(HtmlTag& tag);
  void skipBlanks();

  std::string_view page_;
  std::size_t at_ = 0;
};

std::string lowerAscii(std::string_view text);

}  // namespace varnowick
