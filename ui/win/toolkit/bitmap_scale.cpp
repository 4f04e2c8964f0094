#include <algorithm>
#include <cmath>
#include <cstddef>

#include "ui/win/toolkit/pixel_draw.h"

namespace varnowick {

namespace {

// What one target pixel takes from a run of source pixels, weights summing to 1.
struct Taps {
  int first = 0;
  std::vector<float> weights;
};

// A triangle as wide as a target pixel when scaling down, as a source pixel when
// scaling up: averages in one direction, interpolates in the other.
std::vector<Taps> tapsFor(int source, int target) {
  const double ratio = static_cast<double>(source) / target;
  const double reach = std::max(1.0, ratio);
  std::vector<Taps> all(static_cast<std::size_t>(target));
  for (int i = 0; i < target; ++i) {
    const double centre = (i + 0.5) * ratio - 0.5;
    const int first = std::max(0, static_cast<int>(std::ceil(centre - reach)));
    const int last = std::min(source - 1, static_cast<int>(std::floor(centre + reach)));
    Taps& taps = all[static_cast<std::size_t>(i)];
    taps.first = first;
    double sum = 0;
    for (int s = first; s <= last; ++s) {
      const double weight = std::max(0.0, 1.0 - std::fabs(s - centre) / reach);
      taps.weights.push_back(static_cast<float>(weight));
      sum += weight;
    }
    for (float& w : taps.weights) w = static_cast<float>(w / sum);
  }
  return all;
}

struct Channels {
  float value[4] = {};
  void add(std::uint32_t pixel, float weight) {
    for (int c = 0; c < 4; ++c) value[c] += weight * static_cast<float>(pixel >> (8 * c) & 0xFF);
  }
  void add(const Channels& other, float weight) {
    for (int c = 0; c < 4; ++c) value[c] += weight * other.value[c];
  }
  std::uint32_t packed() const {
    std::uint32_t pixel = 0;
    for (int c = 0; c < 4; ++c) {
      const float bounded = std::clamp(value[c] + 0.5F, 0.0F, 255.0F);
      pixel |= static_cast<std::uint32_t>(bounded) << (8 * c);
    }
    return pixel;
  }
};

}  // namespace

Bitmap scaled(const Bitmap& source, int width, int height) {
  if (source.empty() || width < 1 || height < 1) return {};
  if (source.width == width && source.height == height) return source;
  const std::vector<Taps> columns = tapsFor(source.width, width);
  const std::vector<Taps> rows = tapsFor(source.height, height);
  Bitmap result{width, height, {}};
  result.pixels.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
  std::vector<Channels> line(static_cast<std::size_t>(source.width));
  for (int y = 0; y < height; ++y) {
    // Downwards first, into one line as wide as the source.
    std::fill(line.begin(), line.end(), Channels{});
    const Taps& row = rows[static_cast<std::size_t>(y)];
    for (std::size_t t = 0; t < row.weights.size(); ++t) {
      const std::uint32_t* from = source.pixels.data() + (static_cast<std::size_t>(row.first) + t) *
                                                             static_cast<std::size_t>(source.width);
      for (std::size_t x = 0; x < line.size(); ++x) line[x].add(from[x], row.weights[t]);
    }
    for (int x = 0; x < width; ++x) {
      const Taps& column = columns[static_cast<std::size_t>(x)];
      Channels sum;
      for (std::size_t t = 0; t < column.weights.size(); ++t) {
        sum.add(line[static_cast<std::size_t>(column.first) + t], column.weights[t]);
      }
      result.pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                    static_cast<std::size_t>(x)] = sum.packed();
    }
  }
  return result;
}

}  // namespace varnowick
