// Docking of the main window: when it collapses to a strip at a screen edge,
// slides, expands and floats. Each call takes what the window has gathered and
// returns what it shall do; there is no window, timer or clock in here.
#pragma once

#include <array>
#include <optional>
#include <vector>

#include "core/units.h"
#include "core/workspace.h"
#include "platform/timers.h"
#include "sidebar/screen_extents.h"

namespace varnowick {

inline constexpr Twips kCollapsedStrip{40};  // stays on screen when collapsed
inline constexpr Twips kSlideStep{500};      // per tick
inline constexpr int kFadeStep = 40;         // of 255, per tick
inline constexpr Pixels kRestTolerance{3};   // a mouse that moves no more rests
inline constexpr Twips kEdgeTolerance{120};  // nearer to a border than this is at it
inline constexpr Twips kDropReach{360};      // a pointer let go so near a border means it
// A strip that is to be invisible must not be fully transparent: the system
// passes the mouse through windows of opacity 0.
inline constexpr int kHiddenStripOpacity = 1;
inline constexpr const wchar_t* kSuspendedCaption = L"AUTO-COLLAPSE SUSPENDED";

// False for none, and for what a file may hold in place of an edge.
constexpr bool isEdge(ScreenEdge e) { return e >= ScreenEdge::Left && e <= ScreenEdge::Bottom; }

struct DockInputs {
  TwipsRect window;  // outer rectangle of the main window, on the screen
  ScreenExtents screen;
  Density density;
  Point<Pixels> cursor;
  bool leftButtonDown = false;
  bool mouseOnWindow = false;  // MouseOnWindow over every window of the program
  bool maximised = false;      // or minimised
  // Mouse moves do not arm the expand (text is being edited in the bar, say).
  bool blocked = false;
  // A menu, dialog, edit box, drag or download of ours is active: the bar
  // stays.
  bool keepOpen = false;
  bool animate = true;                 // [Animate]
  bool systemAnimations = true;        // the system's own setting; off: no slide
  bool undockImmediately = false;      // [Undock Immediately]
  bool visibleBorderCollapsed = true;  // [VisibleBorderCollapsed]
  int shownOpacity = 255;              // 255, or less while the bar is translucent
};

enum class CaptionChange { None, Suspended, Normal };
enum class DockChange { None, Expanded, Collapsed, Floating };

// To be applied in the order of the members.
struct DockEffects {
  bool prepareCollapse = false;  // close the jump-to box and what else pops up
  std::optional<int> opacity;    // 1 to 255
  std::optional<Point<Twips>> moveTo;
  std::optional<Size<Twips>> resize;  // together with the move
  std::vector<TimerAction> timers;
  CaptionChange caption = CaptionChange::None;
  DockChange change = DockChange::None;  // the state that has been reached
};

// What lies off screen on each side while the window is expanded at an edge.
struct FrameInsets {
  Twips left, top, right, bottom;
  bool operator==(const FrameInsets&) const = default;
};
FrameInsets frameInsets(ScreenEdge edge);

// The position nearest to the given one at which length lies between from and
// to; from when it does not fit.
Twips clampInto(Twips from, Twips to, Twips position, Twips length);

class Docking {
 public:
  // After loading: a window that was saved collapsed (hidden) is collapsed
  // again without sliding; one that lies off every monitor is brought back.
  DockEffects start(const DockInputs& in, bool hidden);

  // Collapses the window toward its collapse side; nothing moves when that is
  // none.
  DockEffects CollapseToEdge(const DockInputs& in, bool animate);
  DockEffects ExpandFromEdge(const DockInputs& in);
  // The dock menu: takes the edge as collapse side and collapses.
  DockEffects dockTo(const DockInputs& in, ScreenEdge edge);
  // mnuDockNow: collapses to the edge the window is at, or else to the nearest.
  DockEffects dockNow(const DockInputs& in);
  // Before a shortcut starts: collapses a window that is expanded at an edge,
  // unless auto-collapse is suspended.
  DockEffects preLaunch(const DockInputs& in);
  // Hotkey and tray. The bar then stays until the mouse has entered it once, or
  // it loses the focus, or Esc.
  DockEffects open(const DockInputs& in);
  // As open, but collapses a bar that is expanded.
  DockEffects toggle(const DockInputs& in);
  DockEffects mnuSuspendSlideOut();

  DockEffects mouseMoved(const DockInputs& in);
  // The user has taken hold of the window to drag it, and has dragged it on:
  // where it would stand expanded if it were let go now; none where it would
  // float.
  void dragBegan(const DockInputs& in);
  std::optional<TwipsRect> dragged(const DockInputs& in);
  // The user has let go of it: at an edge it stands expanded, elsewhere it
  // floats.
  DockEffects dropped(const DockInputs& in);
  // The user has sized the window.
  DockEffects sized(const DockInputs& in);
  // Monitors, resolution, density or the desktop's own bars have changed.
  DockEffects screenChanged(const DockInputs& in);
  // Translucency or the visible border has been switched. A slide that is under
  // way takes it into account when it ends.
  DockEffects opacityChanged(const DockInputs& in) const;
  void lostFocus() { openedByRequest_ = false; }
  // A dialog or menu of the bar has been closed. Its buttons were elsewhere,
  // and nobody has left the bar by pressing one.
  void dialogClosed() { openedByRequest_ = !isEdge(side_); }

  DockEffects TimerShowTick(const DockInputs& in);
  DockEffects TimerSlideTick(const DockInputs& in);
  DockEffects TimerHideTick(const DockInputs& in);

  ScreenEdge collapseSide() const { return side_; }
  // The edge behind which frameInsets of the window lie since ExpandFromEdge
  // placed it there; None once the user has moved it, and while collapsed.
  ScreenEdge expandedEdge() const {
    return side_ == ScreenEdge::None ? insetEdge_ : ScreenEdge::None;
  }
  // Where dockNow would collapse it to.
  ScreenEdge edgeToCollapseTo(const DockInputs& in) const;
  // True from ExpandFromEdge on until the window collapses or floats.
  bool expanded() const { return expanded_; }
  bool sliding() const { return sliding_; }
  bool suspended() const { return suspended_; }
  // The monitor that the bar belongs to: a collapsed one lies mostly beyond it.
  ScreenMonitor monitor(const DockInputs& in) const;
  // The part of the window that may be seen, when what lies beyond its border
  // would show on the next monitor or over a bar of the desktop.
  std::optional<TwipsRect> clip(const DockInputs& in) const;
  // The rectangle to save: where the user left the window, also while the
  // monitor it stood on is missing.
  TwipsRect rectToSave(const DockInputs& in) const;

 private:
  // docking_geometry.cpp
  struct Border {
    ScreenEdge edge = ScreenEdge::None;
    ScreenMonitor monitor;
  };
  static Twips place(const Border& border);
  static Point<Twips> collapsedPosition(const TwipsRect& window, const Border& border);
  static Point<Twips> expandedPosition(const TwipsRect& window, const Border& border);
  static void clampAlong(TwipsRect& window, const Border& border);
  // True when a monitor begins behind the border, beside the rectangle.
  static bool isInner(const DockInputs& in, const Border& border, const TwipsRect& beside);
  Border borderFor(const DockInputs& in, ScreenEdge edge) const;
  bool slideEnded(const DockInputs& in) const;
  bool touches(const DockInputs& in, ScreenEdge edge) const;
  ScreenEdge touchedEdge(const DockInputs& in) const;
  ScreenEdge standsAt(const DockInputs& in) const;
  ScreenEdge nearestEdge(const DockInputs& in) const;
  // The border at which only the strip of the window shows.
  std::optional<Border> strippedAt(const DockInputs& in, bool hidden) const;
  static Border borderNearPointer(const DockInputs& in, ScreenEdge edge, Twips& distance);
  std::optional<Border> borderAtPointer(const DockInputs& in) const;
  // The size of the window that suits the edge; remembers the one it had.
  Size<Twips> turned(const TwipsRect& window, const Border& border);
  bool movedSinceCollapse(const DockInputs& in) const;

  DockEffects collapse(const DockInputs& in, ScreenEdge edge, bool animate);
  DockEffects redock(const DockInputs& in, ScreenEdge edge);
  DockEffects floatFree(const DockInputs& in);
  void placeCollapsed(const DockInputs& in, DockEffects& effects);
  // The window stands open where it is: expanded at the edge, or floating for
  // None.
  void settleAt(const DockInputs& in, ScreenEdge edge);
  void stopSlide(DockEffects& effects);
  void disarm(DockEffects& effects);

  ScreenEdge side_ = ScreenEdge::None;      // the collapse side
  ScreenEdge lastSide_ = ScreenEdge::None;  // the edge it was at last
  ScreenEdge at_ = ScreenEdge::None;        // the edge that an open window is at
  ScreenEdge insetEdge_ = ScreenEdge::None;
  // The bounds of the monitor at whose border it docked last. Where a window
  // that slides away lies says nothing: it may lie on the next one.
  TwipsRect monitor_;
  bool expanded_ = false;
  bool showArmed_ = false;
  bool showRunning_ = false;  // TimerShow runs
  bool skipRestCheck_ = false;
  bool sliding_ = false;  // TimerSlide runs
  bool suspended_ = false;
  bool openedByRequest_ = false;
  Point<Pixels> armedCursor_;
  // By edge: a drag began near it and has not left it yet. A title at the top
  // of the screen is not dragged there.
  std::array<bool, 5> heldNear_{};
  // Where the window was put last, by this class or by the user; while
  // collapsed, the collapsed position. Any other position it is found at is the
  // user's doing or, when monitors change, the system's.
  std::optional<Point<Twips>> settled_;
  int fadeOpacity_ = 0;
  // Its size before it was turned: for edges at the sides, and for top and
  // bottom.
  std::optional<Size<Twips>> tall_, wide_;
  // Where the window stood before it had to leave a place that no monitor
  // shows.
  struct Home {
    Point<Twips> at;
    ScreenEdge edge = ScreenEdge::None;  // None: it floated
    TwipsRect monitor;                   // of the edge
  };
  std::optional<Home> home_;
};

}  // namespace varnowick
