#include "core/png.h"

#define ZLIB_CONST
#include <zlib.h>

#include <algorithm>
#include <array>
#include <cstdlib>

namespace varnowick {
namespace {

constexpr std::string_view kSignature("\x89PNG\r\n\x1A\n", 8);
constexpr std::uint32_t kMaxPngEdge = 32768;
constexpr std::uint64_t kMaxPngPixels = 1U << 24;
// No deflated byte stands for more than that many.
constexpr std::uint64_t kMaxRatio = 1032;

enum ColourType { kGrey = 0, kTrueColour = 2, kPalette = 3, kGreyAlpha = 4, kTrueColourAlpha = 6 };

const unsigned char* unsignedBytes(std::string_view bytes) {
  return reinterpret_cast<const unsigned char*>(bytes.data());
}

std::uint32_t bigEndian(std::string_view bytes) {
  std::uint32_t value = 0;
  for (const char c : bytes.substr(0, 4)) value = value << 8 | static_cast<unsigned char>(c);
  return value;
}

std::uint32_t crcOf(std::string_view bytes) {
  return static_cast<std::uint32_t>(
      crc32(0, unsignedBytes(bytes), static_cast<uInt>(bytes.size())));
}

struct Header {
  std::uint32_t width = 0, height = 0;
  unsigned depth = 0, type = 0;
  unsigned channels() const {
    return type == kTrueColour ? 3 : type == kTrueColourAlpha ? 4 : type == kGreyAlpha ? 2 : 1;
  }
  std::size_t rowBytes() const {
    return (static_cast<std::size_t>(width) * channels() * depth + 7) / 8;
  }
};

std::optional<Header> readHeader(std::string_view data) {
  if (data.size() != 13) return std::nullopt;
  Header header{bigEndian(data), bigEndian(data.substr(4)), static_cast<unsigned char>(data[8]),
                static_cast<unsigned char>(data[9])};
  const unsigned d = header.depth;
  const bool small = d == 1 || d == 2 || d == 4;
  const bool depthFits = header.type == kGrey      ? small || d == 8 || d == 16
                         : header.type == kPalette ? small || d == 8
                                                   : d == 8 || d == 16;
  const bool typeFits = header.type <= kTrueColourAlpha && header.type != 1 && header.type != 5;
  // The last three: compression, filter, and interlacing, which is left out.
  if (!depthFits || !typeFits || data.substr(10) != std::string_view("\0\0\0", 3) ||
      header.width == 0 || header.height == 0 || header.width > kMaxPngEdge ||
      header.height > kMaxPngEdge ||
      static_cast<std::uint64_t>(header.width) * header.height > kMaxPngPixels) {
    return std::nullopt;
  }
  return header;
}

struct Chunks {
  Header header;
  std::string palette, transparency, deflated;
};

std::optional<Chunks> readChunks(std::string_view bytes) {
  if (!bytes.starts_with(kSignature)) return std::nullopt;
  bytes.remove_prefix(kSignature.size());
  Chunks chunks;
  for (bool first = true; bytes.size() >= 12; first = false) {
    const std::size_t length = bigEndian(bytes);
    if (length > bytes.size() - 12) return std::nullopt;
    const std::string_view type = bytes.substr(4, 4);
    const std::string_view data = bytes.substr(8, length);
    if (crcOf(bytes.substr(4, length + 4)) != bigEndian(bytes.substr(length + 8)))
      return std::nullopt;
    bytes.remove_prefix(length + 12);
    if (first != (type == "IHDR")) return std::nullopt;
    if (type == "IHDR") {
      const auto header = readHeader(data);
      if (!header) return std::nullopt;
      chunks.header = *header;
    } else if (type == "PLTE") {
      chunks.palette = data.substr(0, 256 * 3);
    } else if (type == "tRNS") {
      chunks.transparency = data.substr(0, 256);
    } else if (type == "IDAT") {
      chunks.deflated += data;
    } else if (type == "IEND") {
      return chunks;
    }
  }
  return std::nullopt;
}

class Inflater {
 public:
  explicit Inflater(std::string_view bytes) {
    stream_.next_in = unsignedBytes(bytes);
    stream_.avail_in = static_cast<uInt>(bytes.size());
    ready_ = inflateInit(&stream_) == Z_OK;
  }
  Inflater(const Inflater&) = delete;
  Inflater& operator=(const Inflater&) = delete;
  ~Inflater() {
    if (ready_) inflateEnd(&stream_);
  }
  // False unless there are as many bytes as that.
  bool read(std::vector<unsigned char>& bytes) {
    if (!ready_) return false;
    stream_.next_out = bytes.data();
    stream_.avail_out = static_cast<uInt>(bytes.size());
    const int result = inflate(&stream_, Z_SYNC_FLUSH);
    return (result == Z_OK || result == Z_STREAM_END) && stream_.avail_out == 0;
  }

 private:
  z_stream stream_{};
  bool ready_ = false;
};

int predicted(int left, int up, int upLeft) {
  const int whole = left + up - upLeft;
  const int byLeft = std::abs(whole - left);
  const int byUp = std::abs(whole - up);
  const int byUpLeft = std::abs(whole - upLeft);
  if (byLeft <= byUp && byLeft <= byUpLeft) return left;
  return byUp <= byUpLeft ? up : upLeft;
}

// Rows begin with the byte that names the filter. False for an unknown one.
bool unfilter(std::vector<unsigned char>& row, const std::vector<unsigned char>& above,
              std::size_t pixelBytes) {
  const int filter = row[0];
  if (filter > 4) return false;
  for (std::size_t i = 1; filter != 0 && i < row.size(); ++i) {
    const int left = i > pixelBytes ? row[i - pixelBytes] : 0;
    const int up = above[i];
    const int upLeft = i > pixelBytes ? above[i - pixelBytes] : 0;
    const int add = filter == 1   ? left
                    : filter == 2 ? up
                    : filter == 3 ? (left + up) / 2
                                  : predicted(left, up, upLeft);
    row[i] = static_cast<unsigned char>(row[i] + add);
  }
  return true;
}

std::uint32_t premultiplied(std::uint32_t r, std::uint32_t g, std::uint32_t b, std::uint32_t a) {
  const auto times = [a](std::uint32_t c) { return (c * a + 127) / 255; };
  return a << 24 | times(r) << 16 | times(g) << 8 | times(b);
}

class RowReader {
 public:
  explicit RowReader(const Chunks& chunks) : chunks_(chunks), header_(chunks.header) {
    const std::size_t count = header_.type == kGrey ? 1 : header_.type == kTrueColour ? 3 : 0;
    hasKey_ = count != 0 && chunks.transparency.size() >= 2 * count;
    for (std::size_t i = 0; hasKey_ && i < count; ++i)
      key_[i] = byteOf(chunks.transparency, 2 * i) << 8 | byteOf(chunks.transparency, 2 * i + 1);
  }
  std::uint32_t pixel(const std::vector<unsigned char>& row, std::size_t x) const {
    if (header_.type == kPalette) return paletteColour(sample(row, x));
    const std::size_t channels = header_.channels();
    std::array<unsigned, 4> raw{};
    for (std::size_t i = 0; i < channels; ++i) raw[i] = sample(row, x * channels + i);
    const auto level = [&](std::size_t i) {
      return header_.depth == 16 ? raw[i] >> 8 : raw[i] * 255 / ((1U << header_.depth) - 1);
    };
    if (channels >= 3) {
      const bool clear = hasKey_ && raw[0] == key_[0] && raw[1] == key_[1] && raw[2] == key_[2];
      return premultiplied(level(0), level(1), level(2),
                           channels == 4 ? level(3)
                           : clear       ? 0
                                         : 255);
    }
    const bool clear = hasKey_ && raw[0] == key_[0];
    return premultiplied(level(0), level(0), level(0), channels == 2 ? level(1) : clear ? 0 : 255);
  }

 private:
  static unsigned byteOf(const std::string& bytes, std::size_t at) {
    return static_cast<unsigned char>(bytes[at]);
  }
  unsigned sample(const std::vector<unsigned char>& row, std::size_t index) const {
    if (header_.depth == 16)
      return static_cast<unsigned>(row[1 + index * 2]) << 8 | row[2 + index * 2];
    const std::size_t bit = index * header_.depth;
    const unsigned shift = 8 - header_.depth - static_cast<unsigned>(bit % 8);
    return row[1 + bit / 8] >> shift & ((1U << header_.depth) - 1);
  }
  // Indices beyond the palette are black, as they are everywhere.
  std::uint32_t paletteColour(std::size_t index) const {
    const std::string& palette = chunks_.palette;
    if (index * 3 + 3 > palette.size()) return 0xFF000000U;
    const unsigned alpha =
        index < chunks_.transparency.size() ? byteOf(chunks_.transparency, index) : 255;
    return premultiplied(byteOf(palette, index * 3), byteOf(palette, index * 3 + 1),
                         byteOf(palette, index * 3 + 2), alpha);
  }

  const Chunks& chunks_;
  const Header& header_;
  bool hasKey_ = false;
  std::array<unsigned, 3> key_{};
};

void append(std::string& out, std::uint32_t value) {
  for (int shift = 24; shift >= 0; shift -= 8) out.push_back(static_cast<char>(value >> shift));
}

void appendChunk(std::string& out, std::string_view type, std::string_view data) {
  append(out, static_cast<std::uint32_t>(data.size()));
  std::string body(type);
  body += data;
  out += body;
  append(out, crcOf(body));
}

}  // namespace

std::optional<PngPicture> decodePng(std::string_view bytes) {
  const auto chunks = readChunks(bytes);
  if (!chunks) return std::nullopt;
  const Header& header = chunks->header;
  // What is too short for the size that it claims gets no room.
  if ((header.rowBytes() + 1) * static_cast<std::uint64_t>(header.height) >
      (chunks->deflated.size() + 1) * kMaxRatio) {
    return std::nullopt;
  }
  Inflater inflater(chunks->deflated);
  const RowReader reader(*chunks);
  const std::size_t pixelBytes = std::max<std::size_t>(1, header.channels() * header.depth / 8);
  std::vector<unsigned char> row(header.rowBytes() + 1);
  std::vector<unsigned char> above(row.size());
  PngPicture picture{static_cast<int>(header.width), static_cast<int>(header.height), {}};
  picture.pixels.reserve(static_cast<std::size_t>(header.width) * header.height);
  for (std::uint32_t y = 0; y < header.height; ++y) {
    if (!inflater.read(row) || !unfilter(row, above, pixelBytes)) return std::nullopt;
    for (std::size_t x = 0; x < header.width; ++x) picture.pixels.push_back(reader.pixel(row, x));
    above.swap(row);
  }
  return picture;
}

std::string encodePng(const PngPicture& picture) {
  if (picture.width <= 0 || picture.height <= 0 ||
      picture.pixels.size() !=
          static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(picture.height)) {
    return {};
  }
  std::string rows;
  for (std::size_t i = 0; i < picture.pixels.size(); ++i) {
    if (i % static_cast<std::size_t>(picture.width) == 0) rows.push_back('\0');
    const std::uint32_t pixel = picture.pixels[i];
    const std::uint32_t alpha = pixel >> 24;
    for (const int shift : {16, 8, 0}) {
      const std::uint32_t colour = pixel >> shift & 0xFF;
      rows.push_back(static_cast<char>(
          alpha == 0 ? 0 : std::min<std::uint32_t>(255, (colour * 255 + alpha / 2) / alpha)));
    }
    rows.push_back(static_cast<char>(alpha));
  }
  uLongf size = compressBound(static_cast<uLong>(rows.size()));
  std::string deflated(size, '\0');
  if (compress2(reinterpret_cast<Bytef*>(deflated.data()), &size, unsignedBytes(rows),
                static_cast<uLong>(rows.size()), Z_BEST_SPEED) != Z_OK) {
    return {};
  }
  deflated.resize(size);
  std::string header;
  append(header, static_cast<std::uint32_t>(picture.width));
  append(header, static_cast<std::uint32_t>(picture.height));
  header += std::string_view("\x08\x06\0\0\0", 5);
  std::string out(kSignature);
  appendChunk(out, "IHDR", header);
  appendChunk(out, "IDAT", deflated);
  appendChunk(out, "IEND", {});
  return out;
}

}  // namespace varnowick
