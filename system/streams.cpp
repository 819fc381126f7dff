#include "system/streams.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

#include "system/free_memory.h"

namespace halvane {
namespace {

constexpr std::size_t usualCapacity = 65536;
constexpr std::size_t longLine = 1 << 20;
constexpr std::size_t longestTransfer = 1 << 30;  // some systems refuse 2 GiB and more at once

void waitFor(int descriptor, short event) {
  pollfd waiting{descriptor, event, 0};
  poll(&waiting, 1, -1);
}

bool wouldBlock(int error) {
  return error == EAGAIN || error == EWOULDBLOCK;
}

}  // namespace

std::optional<std::string_view> LineReader::next() {
  giveBackLongLine();
  for (;;) {
    const void* const lineFeed =
        scanned_ < end_ ? std::memchr(buffer_.data() + scanned_, '\n', end_ - scanned_) : nullptr;
    if (lineFeed != nullptr) {
      const std::string_view found(buffer_.data() + begin_, static_cast<const char*>(lineFeed));
      begin_ = scanned_ = begin_ + found.size() + 1;
      if (!std::exchange(passingOver_, false)) return found;
    } else {
      scanned_ = end_;
      if (readMore()) continue;
      const std::size_t begin = std::exchange(begin_, end_);
      if (begin == end_ || passingOver_) return std::nullopt;
      return std::string_view(buffer_.data() + begin, end_ - begin);
    }
  }
}

bool LineReader::readMore() {
  if (ended_ || (end_ == buffer_.capacity() && !makeRoom())) return false;
  for (;;) {
    const ssize_t count =
        read(descriptor_, buffer_.data() + end_, std::min(buffer_.capacity() - end_, longestTransfer));
    if (count > 0) {
      end_ += static_cast<std::size_t>(count);
      return true;
    }
    if (count < 0 && wouldBlock(errno)) {
      waitFor(descriptor_, POLLIN);
    } else if (count == 0 || errno != EINTR) {
      ended_ = true;
      return false;
    }
  }
}

// Moves the unread bytes to the front if that frees at least half of the buffer, and otherwise doubles the
// buffer. So each byte is moved a bounded number of times. False when there is no memory to read anything.
bool LineReader::makeRoom() {
  const std::size_t unread = end_ - begin_;
  if (unread > buffer_.capacity() / 2 || buffer_.capacity() == 0) {
    if (buffer_.resize(std::max(usualCapacity, 2 * buffer_.capacity()))) return true;
    if (buffer_.capacity() == 0) return false;
    passingOver_ = true;
    begin_ = scanned_ = end_ = 0;
    static_cast<void>(buffer_.resize(usualCapacity));
    return true;
  }
  std::memmove(buffer_.data(), buffer_.data() + begin_, unread);
  begin_ = 0;
  scanned_ = end_ = unread;
  return true;
}

void LineReader::giveBackLongLine() {
  const std::size_t unread = end_ - begin_;
  if (buffer_.capacity() <= longLine || unread > usualCapacity) return;
  std::memmove(buffer_.data(), buffer_.data() + begin_, unread);
  scanned_ -= begin_;
  begin_ = 0;
  end_ = unread;
  static_cast<void>(buffer_.resize(usualCapacity));
  giveBackFreeMemory();
}

std::size_t writeWhole(int descriptor, std::string_view bytes) {
  std::size_t written = 0;
  while (written < bytes.size()) {
    const ssize_t count =
        write(descriptor, bytes.data() + written, std::min(bytes.size() - written, longestTransfer));
    if (count >= 0) {
      written += static_cast<std::size_t>(count);
    } else if (wouldBlock(errno)) {
      waitFor(descriptor, POLLOUT);
    } else if (errno != EINTR) {
      break;
    }
  }
  return written;
}

}  // namespace halvane
