// GoogleTest's Notification for the win32 thread model, which has no
// std::mutex. Forced into every test source, so it must not pull <windows.h>
// into the portable ones.
#pragma once

#ifdef __cplusplus
namespace testing::internal {

class Notification {
 public:
  Notification();
  ~Notification();
  Notification(const Notification&) = delete;
  Notification& operator=(const Notification&) = delete;

  void Notify();
  void WaitForNotification();

 private:
  void* event_;
};

}  // namespace testing::internal
#endif
