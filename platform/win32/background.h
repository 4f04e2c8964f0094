// One kit for everything that is done beside the window's thread: workers that can
// be asked to stop, waited for, or left behind; mailboxes for what they have found;
// and the doorbell that tells the window's thread to look into them. A worker owns
// copies and a Sender, never whoever has started it, so that either may go first.
// Knows nothing of what the work is.
#pragma once

#include <windows.h>

#include <functional>
#include <map>
#include <memory>
#include <set>
#include <span>
#include <utility>
#include <vector>

#include "platform/win32/critical_section.h"
#include "platform/win32/handles.h"

namespace varnowick {

// Runs code in the thread that has made it, when that comes to its messages: menus,
// boxes and drags let it through as well. Outlives those that are added.
class Doorbell {
 public:
  Doorbell();
  Doorbell(const Doorbell&) = delete;
  Doorbell& operator=(const Doorbell&) = delete;
  ~Doorbell();

  // Both in the doorbell's thread. A number is never given twice, and what was rung
  // before remove() is dropped after it.
  unsigned add(std::function<void()> news);
  void remove(unsigned id);
  // In any thread. Once for as many rings as come before it is answered; false when
  // the system takes none.
  bool ring(unsigned id);

 private:
  static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  void answer(unsigned id);

  HWND window_ = nullptr;
  std::map<unsigned, std::function<void()>> news_;
  unsigned lastId_ = 0;
  CriticalSection lock_;  // around everything below
  std::set<unsigned> rung_;
};

// Takes results in from any thread, for an owner in the doorbell's thread that may
// walk away at any time.
template <class Result>
class Mailbox {
  struct Box {
    CriticalSection lock;  // around everything below
    std::vector<Result> results;
    Doorbell* doorbell = nullptr;  // null: nobody waits
    unsigned id = 0;
  };

 public:
  class Sender {
   public:
    // False: nobody waits any more.
    bool send(Result result) const {
      const Lock lock(box_->lock);
      if (box_->doorbell == nullptr) return false;
      box_->results.push_back(std::move(result));
      box_->doorbell->ring(box_->id);
      return true;
    }

   private:
    friend class Mailbox;
    explicit Sender(std::shared_ptr<Box> box) : box_(std::move(box)) {}
    std::shared_ptr<Box> box_;
  };

  // `news` is called when there is something to take(); it may do away with this.
  Mailbox(Doorbell& doorbell, std::function<void()> news) : box_(std::make_shared<Box>()) {
    box_->id = doorbell.add(std::move(news));
    box_->doorbell = &doorbell;
  }
  Mailbox(const Mailbox&) = delete;
  Mailbox& operator=(const Mailbox&) = delete;
  ~Mailbox() {
    std::vector<Result> unwanted;
    const Lock lock(box_->lock);
    box_->doorbell->remove(box_->id);
    box_->doorbell = nullptr;
    unwanted.swap(box_->results);
  }

  Sender sender() const { return Sender(box_); }
  // In the order in which they came.
  std::vector<Result> take() {
    const Lock lock(box_->lock);
    return std::exchange(box_->results, {});
  }

 private:
  std::shared_ptr<Box> box_;
};

// Whether a worker has been asked to stop.
class Stop {
 public:
  HANDLE event() const { return event_->get(); }
  bool asked() const { return waited(0); }
  // True as soon as it has been asked to, false after that time.
  bool waited(DWORD milliseconds) const {
    return WaitForSingleObject(event(), milliseconds) == WAIT_OBJECT_0;
  }

 private:
  friend class Worker;
  std::shared_ptr<const KernelHandle> event_;
};

// A thread. Letting go of it asks it to stop and leaves it behind.
class Worker {
 public:
  Worker() = default;
  Worker(Worker&&) = default;
  Worker& operator=(Worker&& other) noexcept;
  ~Worker() { stop(); }

  // What `work` holds lives until it ends, and is freed in its thread. What it throws
  // ends it. Missing media fail there instead of asking for a disk. Without an effect
  // when the system has no thread to give: then it converts to false.
  static Worker start(std::function<void(const Stop&)> work);
  explicit operator bool() const { return static_cast<bool>(thread_); }
  void stop() const;
  // Also true when there is no thread.
  bool ended() const { return wait(0); }
  bool wait(DWORD milliseconds) const;
  // At most that long for all of them together. True when all have ended.
  static bool waitForAll(std::span<const Worker* const> workers, DWORD milliseconds);

 private:
  Stop stop_;
  KernelHandle thread_;
};

}  // namespace varnowick
