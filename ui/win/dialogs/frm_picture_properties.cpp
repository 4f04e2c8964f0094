#include "ui/win/dialogs/frm_picture_properties.h"

#include <algorithm>
#include <cmath>
#include <cwchar>

#include "containers/picture_size.h"
#include "shortcuts/addresses.h"
#include "ui/win/dialogs/browse.h"
#include "ui/win/images/picture_decoder.h"

namespace varnowick {
namespace {

using Id = frmPictureProperties::Id;
constexpr int kMostPixels = 10'000;

std::vector<DialogRow> rows() {
  using enum DialogControl;
  return {
      {Label, -1, L"&Picture file", 7, 7, 286, 8},
      {Edit, Id::kPath, L"", 7, 17, 232, 14},
      {Button, Id::kBrowse, L"&Change...", 243, 17, 50, 14},
      {Label, -1, L"&Width in pixels", 7, 38, 70, 8},
      {Edit, Id::kWidth, L"", 7, 48, 66, 14},
      {Label, -1, L"&Height in pixels", 81, 38, 70, 8},
      {Edit, Id::kHeight, L"", 81, 48, 66, 14},
      {Button, Id::kOriginal, L"Ori&ginal size", 155, 48, 60, 14},
      {CheckBox, Id::kKeepProportions, L"&Keep proportions", 7, 68, 100, 10},
      {ErrorLabel, Id::kFault, L"", 7, 86, 178, 17},
      {DefaultButton, IDOK, L"OK", 189, 88, 50, 14},
      {Button, IDCANCEL, L"Cancel", 243, 88, 50, 14},
  };
}

}  // namespace

frmPictureProperties::frmPictureProperties(clsPicture& picture, Density density,
                                           const std::wstring& error)
    : Dialog(L"Picture properties", 300, 109, rows(), error),
      picture_(picture),
      density_(density) {}

bool frmPictureProperties::edit(HWND owner) { return showModal(owner) == IDOK; }

void frmPictureProperties::initialise() {
  setText(kPath, picture_.Path);
  setChecked(kKeepProportions, true);
  const Twips frame = kPictureFrame * 2;
  setSize({density_.toPixels(picture_.rect.width - frame),
           density_.toPixels(picture_.rect.height - frame)});
}

void frmPictureProperties::setSize(Size<Pixels> size) {
  const int width = std::clamp(size.width.value, 1, kMostPixels);
  const int height = std::clamp(size.height.value, 1, kMostPixels);
  shape_ = static_cast<double>(height) / width;
  filling_ = true;
  setText(kWidth, std::to_wstring(width));
  setText(kHeight, std::to_wstring(height));
  filling_ = false;
}

std::optional<int> frmPictureProperties::entered(int id) const {
  const std::wstring digits = text(id);
  wchar_t* end = nullptr;
  const long value = std::wcstol(digits.c_str(), &end, 10);
  if (end == digits.c_str() || *end != L'\0' || value < 1 || value > kMostPixels)
    return std::nullopt;
  return static_cast<int>(value);
}

std::optional<Size<Pixels>> frmPictureProperties::natural() const {
  const std::wstring path = text(kPath);
  return path.empty() || isServerPath(path) ? std::nullopt : pictureSizeOf(path);
}

void frmPictureProperties::changed(int id) {
  if (filling_) return;
  // It may be mended now; the next OK will tell.
  setText(kFault, L"");
  const std::optional<int> width = entered(kWidth);
  const std::optional<int> height = entered(kHeight);
  if (!checked(kKeepProportions)) {
    if (width && height) shape_ = static_cast<double>(*height) / *width;
    return;
  }
  filling_ = true;
  const auto follow = [this](int field, double value) {
    const int pixels = static_cast<int>(std::clamp(std::round(value), 1.0, 1.0 * kMostPixels));
    setText(field, std::to_wstring(pixels));
  };
  if (id == kWidth && width) follow(kHeight, *width * shape_);
  if (id == kHeight && height) follow(kWidth, *height / shape_);
  filling_ = false;
}

void frmPictureProperties::browse() {
  const auto chosen =
      browseForFile(handle(), {L"The picture to show", kPictureFilter}, text(kPath));
  if (!chosen) return;
  setText(kPath, *chosen);
  // As wide as before, in the shape of the new one.
  const auto size = natural();
  const std::optional<int> width = entered(kWidth);
  if (size && width && size->width.value > 0)
    setSize(
        {{*width},
         {static_cast<int>(std::round(1.0 * *width * size->height.value / size->width.value))}});
  focus(kPath);
}

void frmPictureProperties::confirm() {
  const std::wstring path = text(kPath);
  if (path.empty()) return complain(kFault, L"Please enter the file.", kPath);
  // One that has gone may stay, and come back.
  if (path != picture_.Path && !isServerPath(path) && !natural())
    return complain(kFault, L"This file is no picture that can be shown.", kPath);
  const std::optional<int> width = entered(kWidth);
  const std::optional<int> height = entered(kHeight);
  if (!width || !height)
    return complain(kFault, L"Please enter a number of pixels from 1 to 10000.",
                    width ? kHeight : kWidth);
  picture_.Path = path;
  const Twips frame = kPictureFrame * 2;
  picture_.rect.width = std::max(density_.toTwips(Pixels{*width}) + frame, kLeastPictureSize.width);
  picture_.rect.height =
      std::max(density_.toTwips(Pixels{*height}) + frame, kLeastPictureSize.height);
  end(IDOK);
}

void frmPictureProperties::command(int id) {
  switch (id) {
    case IDOK:
      return confirm();
    case kBrowse:
      return browse();
    case kOriginal:
      if (const auto size = natural()) return setSize(*size);
      return complain(kFault, L"This file is no picture that can be shown.", kPath);
    default:
      return end(id);
  }
}

}  // namespace varnowick
