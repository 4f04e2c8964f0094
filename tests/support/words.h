// The words of a text: tables of short texts stay readable that way.
#pragma once

#include <iterator>
#include <sstream>
#include <string>
#include <vector>

namespace varnowick {

inline std::vector<std::wstring> words(const std::wstring& text) {
  using Word = std::istream_iterator<std::wstring, wchar_t>;
  std::wistringstream in(text);
  return {Word(in), Word()};
}

}  // namespace varnowick
