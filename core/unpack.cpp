#include "core/unpack.h"

#include <zlib.h>

#include <algorithm>
#include <limits>

namespace varnowick {
namespace {

constexpr int kGzipOrZlib = 15 + 32;
// What "deflate" is taken for by some servers.
constexpr int kBare = -15;
constexpr std::size_t kUnpackStep = 64 * 1024;

class StreamInflater {
 public:
  StreamInflater(std::string_view packed, int form) {
    stream_.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(packed.data()));
    stream_.avail_in = static_cast<uInt>(packed.size());
    ready_ = inflateInit2(&stream_, form) == Z_OK;
  }
  StreamInflater(const StreamInflater&) = delete;
  StreamInflater& operator=(const StreamInflater&) = delete;
  ~StreamInflater() {
    if (ready_) inflateEnd(&stream_);
  }

  Unpacked run(std::size_t most) {
    Unpacked result;
    std::string step(kUnpackStep, '\0');
    while (ready_) {
      stream_.next_out = reinterpret_cast<Bytef*>(step.data());
      stream_.avail_out = static_cast<uInt>(step.size());
      const uInt before = stream_.avail_in;
      const int code = inflate(&stream_, Z_NO_FLUSH);
      const std::size_t got = step.size() - stream_.avail_out;
      const std::size_t room = most - result.bytes.size();
      result.bytes.append(step, 0, std::min(got, room));
      result.tooLong = got > room;
      if (result.tooLong || (code != Z_OK && code != Z_STREAM_END)) break;
      if (code == Z_STREAM_END) {
        // Several may follow each other; what else follows is of no account.
        result.whole = true;
        const bool another =
            stream_.avail_in > 1 && stream_.next_in[0] == 0x1F && stream_.next_in[1] == 0x8B;
        if (!another || inflateReset(&stream_) != Z_OK) break;
        result.whole = false;
      } else if (got == 0 && stream_.avail_in == before) {
        break;
      }
    }
    return result;
  }

 private:
  z_stream stream_{};
  bool ready_ = false;
};

}  // namespace

Unpacked unpack(std::string_view packed, std::size_t mostBytes) {
  if (packed.empty()) return {{}, true};
  if (packed.size() > std::numeric_limits<uInt>::max()) return {{}, false, true};
  Unpacked result = StreamInflater(packed, kGzipOrZlib).run(mostBytes);
  if (!result.whole && !result.tooLong && result.bytes.empty())
    result = StreamInflater(packed, kBare).run(mostBytes);
  return result;
}

}  // namespace varnowick
