// ZaltFuzz::ByteReader: reads the fuzz input front to back as small numbers,
// flags and strings. Once the input is used up every read returns zero or an
// empty string, so a decoder never has to check for the end.
//
// Strings come either from the input or, to let separate parts of one input
// name the same reference or language, from a small pool of typical values:
//
//   ZaltFuzz::ByteReader in(data, size);
//   std::string lang = in.string({"en-US", "de-DE"});
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace ZaltFuzz {

class ByteReader {
public:
  ByteReader(const std::uint8_t* data, std::size_t size) : m_data(data), m_size(size) {}

  bool empty() const { return m_position == m_size; }

  std::uint8_t byte() { return empty() ? 0 : m_data[m_position++]; }

  bool flag() { return (byte() & 1U) != 0; }

  // Little-endian, from as many bytes as are left (at most eight).
  std::uint64_t number64() {
    std::uint64_t value = 0;
    for (unsigned shift = 0; shift < 64 && !empty(); shift += 8) {
      value |= static_cast<std::uint64_t>(byte()) << shift;
    }
    return value;
  }

  // One byte: with the high bit set a pool entry, otherwise that many bytes
  // (up to 63) of the input. An empty pool reads from the input only.
  std::string string(const std::vector<std::string>& pool) {
    const std::uint8_t head = byte();
    if ((head & 0x80U) != 0 && !pool.empty()) {
      return pool[(head & 0x7FU) % pool.size()];
    }
    return take(head & 0x3FU);
  }

  // Everything that is left.
  std::string rest() { return take(m_size - m_position); }

private:
  std::string take(std::size_t count) {
    const std::size_t length = count < m_size - m_position ? count : m_size - m_position;
    std::string bytes(length, '\0');
    if (length != 0) {
      std::memcpy(bytes.data(), m_data + m_position, length);
    }
    m_position += length;
    return bytes;
  }

  const std::uint8_t* m_data;
  std::size_t m_size;
  std::size_t m_position = 0;
};

}  // namespace ZaltFuzz
