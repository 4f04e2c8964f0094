// The settings in the order of the file: key, member, what InitDefaultSettings
// sets. The settings file's writer and reader and the defaults all walk this
// one table, so that a new setting is a new row.
#pragma once

#include <span>
#include <string_view>

#include "core/field_table.h"
#include "core/settings.h"

namespace varnowick {

// When a setting is set to its initial value.
enum class SetInitially {
  Never,       // keeps what the windows have before loading
  OnLoad,      // each time before a settings file is read
  ByDefaults,  // by InitDefaultSettings, which loading calls too
};

struct SettingRow {
  Field<Settings> field;
  SetInitially when = SetInitially::Never;
  std::string_view initial;    // in the form of the file
  std::string_view whenBlank;  // what is written in place of a blank text
  // Stands in the file for older readers; its value is not read.
  bool writeOnly() const { return field.kind == ValueKind::Constant; }
};

std::span<const SettingRow> settingsTable();

// Sets the built-in values that stand before the defaults.
void setBuiltInSettings(Settings& settings);
// Sets the defaults; settings that have none are left alone.
void InitDefaultSettings(Settings& settings);

// The keys of the recent searches, newest first.
std::string_view recentSearchKey(std::size_t position);  // below kMaxRecentSearches
inline constexpr const wchar_t* kNoRecentSearch = L"[No recent search]";

}  // namespace varnowick
