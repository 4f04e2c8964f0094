// The settings in the order of the file: key, member, what a change of it affects,
// whether InitDefaultSettings sets it. The settings file's writer and reader, the
// defaults and what follows a change all walk this one table, so that a new setting
// is a new row.
#pragma once

#include <span>
#include <string_view>

#include "core/field_table.h"
#include "core/settings.h"

namespace varnowick {

// What has to be done anew when a setting changes, added together. Most are read
// where they are used and affect nothing.
enum Affects : unsigned {
  kAffectsNothing = 0,
  kAffectsPalette = 1,
  kAffectsLayout = 2,  // of what lies in the windows
  kAffectsFrame = 4,   // of the main window around it
  kAffectsOpacity = 8,
  kAffectsTray = 16,
  kAffectsHotkey = 32,
  kAffectsToolbar = 64,
  kAffectsWeb = 128  // what is fetched, and how
};

// When a setting is set to its default.
enum class SetInitially {
  Never,       // keeps what it has before loading
  OnLoad,      // each time before a settings file is read
  ByDefaults,  // by InitDefaultSettings, which loading calls too
};

struct SettingRow {
  Field<Settings> field;
  SetInitially when = SetInitially::Never;
  unsigned affects = kAffectsNothing;
  std::string_view whenBlank;  // what is written in place of a blank text
  // Stands in the file for older readers; its value is not read.
  bool writeOnly() const { return field.kind == ValueKind::Constant; }
};

std::span<const SettingRow> settingsTable();

// Sets the built-in values that stand before the defaults.
void setBuiltInSettings(Settings& settings);
// Sets the defaults; settings that have none are left alone.
void InitDefaultSettings(Settings& settings);
// What all the settings affect in which the two differ.
unsigned affected(const Settings& before, const Settings& after);

// The keys of the recent searches, newest first.
std::string_view recentSearchKey(std::size_t position);  // below kMaxRecentSearches
inline constexpr const wchar_t* kNoRecentSearch = L"[No recent search]";

}  // namespace varnowick
