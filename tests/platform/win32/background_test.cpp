#include "platform/win32/background.h"

#include <gtest/gtest.h>

#include <optional>
#include <stdexcept>

#include "tests/support/run_messages.h"

namespace varnowick {
namespace {

KernelHandle makeEvent() { return KernelHandle(CreateEventW(nullptr, TRUE, FALSE, nullptr)); }

// What has been rung by now is answered.
void answerAll(Doorbell& doorbell) {
  bool last = false;
  doorbell.ring(doorbell.add([&] { last = true; }));
  ASSERT_TRUE(runMessagesUntil([&] { return last; }));
}

TEST(Background, ResultsAreAnnouncedAndTakenInOrder) {
  Doorbell doorbell;
  std::vector<int> got;
  int rings = 0;
  std::unique_ptr<Mailbox<int>> box;
  box = std::make_unique<Mailbox<int>>(doorbell, [&] {
    ++rings;
    for (const int result : box->take()) got.push_back(result);
  });
  for (int i = 0; i < 3; ++i) EXPECT_TRUE(box->sender().send(i));
  answerAll(doorbell);
  EXPECT_EQ(rings, 1);
  Worker worker = Worker::start([sender = box->sender()](const Stop& stop) {
    for (int i = 3; i < 1000; ++i) sender.send(i);
    stop.waited(INFINITE);
    sender.send(1000);
  });
  ASSERT_TRUE(runMessagesUntil([&] { return got.size() == 1000; }));
  EXPECT_FALSE(worker.ended());
  worker.stop();
  ASSERT_TRUE(runMessagesUntil([&] { return got.size() == 1001; }));
  for (int i = 0; i <= 1000; ++i) EXPECT_EQ(got[static_cast<std::size_t>(i)], i);
}

TEST(Background, OwnersWalkAwayWhileResultsCome) {
  Doorbell doorbell;
  int calls = 0;
  std::unique_ptr<Mailbox<int>> box;
  box = std::make_unique<Mailbox<int>>(doorbell, [&] {
    ++calls;
    box.reset();
  });
  const auto sender = box->sender();
  Worker worker = Worker::start([sender](const Stop&) {
    while (sender.send(1)) {
    }
  });
  ASSERT_TRUE(runMessagesUntil([&] { return worker.ended(); }));
  EXPECT_EQ(calls, 1);
  EXPECT_FALSE(sender.send(2));
  {
    // What has been rung already is for nobody, even where another has moved in.
    std::optional<Mailbox<int>> rung(std::in_place, doorbell, [] { ADD_FAILURE(); });
    EXPECT_TRUE(rung->sender().send(1));
    rung.reset();
    const Mailbox<int> next(doorbell, [] { ADD_FAILURE(); });
    answerAll(doorbell);
  }
}

TEST(Background, WhatFailsKeepsNothingElseFromComing) {
  Doorbell doorbell;
  Mailbox<int> failing(doorbell, [] { throw std::runtime_error("news"); });
  EXPECT_TRUE(failing.sender().send(1));
  const Worker worker = Worker::start([](const Stop&) { throw std::runtime_error("work"); });
  EXPECT_TRUE(worker.wait(20'000));
  answerAll(doorbell);
}

TEST(Background, AStuckWorkerIsLeftBehindWithWhatItHolds) {
  const auto answers = std::make_shared<KernelHandle>(makeEvent());
  const auto ended = std::make_shared<KernelHandle>(makeEvent());
  std::weak_ptr<int> held;
  {
    Doorbell doorbell;
    const Mailbox<int> box(doorbell, [] { ADD_FAILURE(); });
    auto thing = std::make_shared<int>(1);
    held = thing;
    // A drive that does not answer is not impressed by being asked to stop.
    const Worker stuck =
        Worker::start([=, sender = box.sender(), thing = std::move(thing)](const Stop& stop) {
          WaitForSingleObject(answers->get(), INFINITE);
          EXPECT_TRUE(stop.asked());
          EXPECT_FALSE(sender.send(*thing));
          SetEvent(ended->get());
        });
    const Worker quick = Worker::start([](const Stop& stop) { stop.waited(INFINITE); });
    quick.stop();
    const Worker* const all[] = {&quick, &stuck};
    EXPECT_FALSE(Worker::waitForAll(all, 100));
    EXPECT_TRUE(quick.wait(20'000));
  }
  EXPECT_FALSE(held.expired());
  SetEvent(answers->get());
  EXPECT_EQ(WaitForSingleObject(ended->get(), 20'000), WAIT_OBJECT_0);
  EXPECT_TRUE(runMessagesUntil([&] { return held.expired(); }));
}

}  // namespace
}  // namespace varnowick
