#include <fcntl.h>
#include <gtest/gtest.h>
#include <pthread.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <chrono>
#include <csignal>
#include <string>
#include <thread>

#include "system/streams.h"

namespace halvane {
namespace {

using namespace std::chrono_literals;

std::string someBytes(std::size_t count) {
  std::string bytes;
  for (std::size_t i = 0; bytes.size() < count; ++i) bytes.append(std::to_string(i)).append("\n");
  bytes.resize(count);
  return bytes;
}

// Reads slowly, a little at a time, until nobody writes any more.
std::string readSlowly(int descriptor) {
  std::string all;
  std::array<char, 8192> block;
  for (ssize_t count; (count = read(descriptor, block.data(), block.size())) > 0;) {
    all.append(block.data(), static_cast<std::size_t>(count));
    std::this_thread::sleep_for(1ms);
  }
  return all;
}

TEST(WriteWhole, WritesAllThatASlowReaderTakesThroughAPipeThatDoesNotBlock) {
  std::array<int, 2> ends;
  ASSERT_EQ(pipe(ends.data()), 0);
  ASSERT_EQ(fcntl(ends[1], F_SETFL, O_NONBLOCK), 0);
  const std::string bytes = someBytes(1000000);
  std::string received;
  std::thread reader([&] { received = readSlowly(ends[0]); });
  EXPECT_EQ(writeWhole(ends[1], bytes), bytes.size());
  close(ends[1]);
  reader.join();
  close(ends[0]);
  EXPECT_EQ(received, bytes);
}

TEST(WriteWhole, WritesAllThroughAPipeThatBlocks) {
  std::array<int, 2> ends;
  ASSERT_EQ(pipe(ends.data()), 0);
  const std::string bytes = someBytes(1000000);
  std::string received;
  std::thread reader([&] { received = readSlowly(ends[0]); });
  EXPECT_EQ(writeWhole(ends[1], bytes), bytes.size());
  close(ends[1]);
  reader.join();
  close(ends[0]);
  EXPECT_EQ(received, bytes);
}

TEST(WriteWhole, GoesOnAfterASignal) {
  static std::atomic<int> signalsSeen = 0;
  struct sigaction action {};
  action.sa_handler = [](int) { ++signalsSeen; };  // without SA_RESTART: the write ends early
  struct sigaction before {};
  ASSERT_EQ(sigaction(SIGUSR1, &action, &before), 0);
  std::array<int, 2> ends;
  ASSERT_EQ(pipe(ends.data()), 0);
  const std::string bytes = someBytes(500000);
  const pthread_t writing = pthread_self();
  std::string received;
  std::thread reader([&] {
    for (int i = 0; i < 5; ++i) {
      std::this_thread::sleep_for(20ms);
      pthread_kill(writing, SIGUSR1);
    }
    received = readSlowly(ends[0]);
  });
  EXPECT_EQ(writeWhole(ends[1], bytes), bytes.size());
  close(ends[1]);
  reader.join();
  close(ends[0]);
  EXPECT_EQ(received, bytes);
  EXPECT_GT(signalsSeen, 0);
  sigaction(SIGUSR1, &before, nullptr);
}

TEST(WriteWhole, TellsHowMuchWasWrittenBeforeTheReaderLeft) {
  ASSERT_NE(std::signal(SIGPIPE, SIG_IGN), SIG_ERR);
  std::array<int, 2> ends;
  ASSERT_EQ(pipe(ends.data()), 0);
  std::thread reader([&] {
    std::this_thread::sleep_for(20ms);
    close(ends[0]);
  });
  EXPECT_LT(writeWhole(ends[1], someBytes(5000000)), 5000000U);
  reader.join();
  EXPECT_EQ(writeWhole(ends[1], "x"), 0U);
  close(ends[1]);
}

TEST(WriteWhole, OfNothingWritesNothing) {
  EXPECT_EQ(writeWhole(-1, ""), 0U);
  EXPECT_EQ(writeWhole(-1, "x"), 0U) << "no such descriptor";
}

}  // namespace
}  // namespace halvane
