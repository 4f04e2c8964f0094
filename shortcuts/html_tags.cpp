#include "shortcuts/html_tags.h"

namespace varnowick {
namespace {

constexpr std::string_view kBlanks = " \t\r\n\f";
constexpr std::size_t kMaxName = 64;
constexpr std::size_t kMaxAttributes = 64;

bool isBlank(char c) { return kBlanks.find(c) != std::string_view::npos; }
bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

}  // namespace

std::string lowerAscii(std::string_view text) {
  std::string result(text);
  for (char& c : result) c = lower(c);
  return result;
}

std::string_view HtmlTag::value(std::string_view attribute) const {
  for (const Attribute& a : attributes)
    if (a.name == attribute) return a.value;
  return {};
}

void HtmlTagReader::skipPast(std::string_view end) {
  const std::size_t found = page_.find(end, at_);
  at_ = found == std::string_view::npos ? page_.size() : found + end.size();
}

void HtmlTagReader::skipBlanks() {
  while (at_ < page_.size() && isBlank(page_[at_])) ++at_;
}

// To the end tag of an element whose content is no markup.
void HtmlTagReader::skipElement(std::string_view name) {
  const std::string end = "</" + std::string(name);
  while ((at_ = page_.find("</", at_)) != std::string_view::npos) {
    if (lowerAscii(page_.substr(at_, end.size())) == end) return;
    at_ += 2;
  }
  at_ = page_.size();
}

bool HtmlTagReader::readAttribute(HtmlTag& tag) {
  skipBlanks();
  if (at_ >= page_.size() || page_[at_] == '>') return false;
  const std::size_t start = at_;
  while (at_ < page_.size() && !isBlank(page_[at_]) && page_[at_] != '>' &&
         (page_[at_] != '=' || at_ == start))
    ++at_;
  const std::string_view name = page_.substr(start, at_ - start);
  skipBlanks();
  std::string_view value;
  if (at_ < page_.size() && page_[at_] == '=') {
    ++at_;
    skipBlanks();
    if (at_ < page_.size() && (page_[at_] == '"' || page_[at_] == '\'')) {
      const std::size_t end = page_.find(page_[at_], at_ + 1);
      // A quote that is never closed makes the rest of the page its value.
      const std::size_t stop = end == std::string_view::npos ? page_.size() : end;
      value = page_.substr(at_ + 1, stop - at_ - 1);
      at_ = stop == page_.size() ? stop : stop + 1;
    } else {
      const std::size_t from = at_;
      while (at_ < page_.size() && !isBlank(page_[at_]) && page_[at_] != '>') ++at_;
      value = page_.substr(from, at_ - from);
    }
  }
  if (tag.attributes.size() < kMaxAttributes && name.size() <= kMaxName)
    tag.attributes.push_back({lowerAscii(name), value});
  return true;
}

bool HtmlTagReader::readTag(HtmlTag& tag) {
  const std::size_t start = at_;
  while (at_ < page_.size() && !isBlank(page_[at_]) && page_[at_] != '>' &&
         (page_[at_] != '/' || at_ == start))
    ++at_;
  tag.name = lowerAscii(page_.substr(start, at_ - start).substr(0, kMaxName));
  tag.attributes.clear();
  while (readAttribute(tag)) {
  }
  if (at_ >= page_.size()) return false;
  ++at_;
  return true;
}

bool HtmlTagReader::next(HtmlTag& tag) {
  while ((at_ = page_.find('<', at_)) != std::string_view::npos) {
    ++at_;
    if (page_.substr(at_).starts_with("!--")) {
      skipPast("-->");
      continue;
    }
    const std::size_t letter = at_ < page_.size() && page_[at_] == '/' ? at_ + 1 : at_;
    if (letter >= page_.size() || !isLetter(page_[letter])) continue;
    if (!readTag(tag)) break;
    for (const char* raw : {"script", "style", "title", "textarea"})
      if (tag.name == raw) skipElement(raw);
    return true;
  }
  at_ = page_.size();
  return false;
}

}  // namespace varnowick
