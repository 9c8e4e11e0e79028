#include <Zalt/Display/Private/LocatedJson.h>

#include <algorithm>
#include <iterator>
#include <string>

namespace Zalt {
namespace Display {
namespace Private {
namespace {

// Reads the document for nlohmann's parser and tells how far it has read:
// the parser hands each value to the handler as soon as it has read it (a
// number with one character more), so the value began at the first
// character after the previous one that is not white space or a separator.
class CountingIterator {
public:
  using iterator_category = std::input_iterator_tag;
  using value_type = char;
  using difference_type = std::ptrdiff_t;
  using pointer = const char*;
  using reference = const char&;

  CountingIterator(const char* at, const char** furthest) : m_at(at), m_furthest(furthest) {}

  reference operator*() const { return *m_at; }
  CountingIterator& operator++() {
    ++m_at;
    *m_furthest = std::max(*m_furthest, m_at);
    return *this;
  }
  bool operator==(const CountingIterator& other) const { return m_at == other.m_at; }
  bool operator!=(const CountingIterator& other) const { return m_at != other.m_at; }

private:
  const char* m_at;
  const char** m_furthest;
};

class TreeBuilder {
public:
  using number_integer_t = nlohmann::json::number_integer_t;
  using number_unsigned_t = nlohmann::json::number_unsigned_t;
  using number_float_t = nlohmann::json::number_float_t;
  using string_t = nlohmann::json::string_t;
  using binary_t = nlohmann::json::binary_t;

  explicit TreeBuilder(std::string_view document)
      : m_document(document), m_furthest(document.data()), m_previousEnd(document.data()) {
    if (document.substr(0, 3) == "\xEF\xBB\xBF") {
      m_previousEnd += 3;
    }
  }

  const char** furthest() { return &m_furthest; }
  LocatedValue& root() { return m_root; }

  // NOLINTBEGIN(readability-identifier-naming): nlohmann's SAX interface names them.
  bool null() { return scalar(nullptr); }
  bool boolean(bool value) { return scalar(value); }
  bool number_integer(number_integer_t value) { return scalar(value); }
  bool number_unsigned(number_unsigned_t value) { return scalar(value); }
  bool number_float(number_float_t value, const string_t&) { return scalar(value); }
  bool string(string_t& value) { return scalar(value); }
  bool binary(binary_t&) { return scalar(nullptr); }
  bool start_object(std::size_t) { return open(nlohmann::json::object()); }
  bool start_array(std::size_t) { return open(nlohmann::json::array()); }
  bool end_object() { return close(); }
  bool end_array() { return close(); }

  bool key(string_t& name) {
    const JsonPlace where = tokenPlace();
    m_open.back()->members.push_back({name, where, {}});
    return true;
  }

  bool parse_error(std::size_t position, const std::string&, const nlohmann::detail::exception& error) {
    const std::size_t offset = std::min(position > 0 ? position - 1 : 0, m_document.size());
    const std::string what = error.what();
    const std::size_t reason = what.find("syntax error");
    throw LocatedJsonError(reason == std::string::npos ? what : what.substr(reason), placeOf(offset));
  }
  // NOLINTEND(readability-identifier-naming)

private:
  // Tokens come in document order, so each place is counted on from the one
  // before: counting from the start each time would take a long document
  // quadratic time.
  JsonPlace placeOf(std::size_t offset) {
    if (offset < m_counted) {
      m_counted = 0;
      m_countedPlace = {1, 1};
    }
    for (; m_counted < offset; ++m_counted) {
      const auto byte = static_cast<unsigned char>(m_document[m_counted]);
      if (byte == '\n') {
        m_countedPlace = {m_countedPlace.line + 1, 1};
      } else if ((byte & 0xC0u) != 0x80u) {
        ++m_countedPlace.column;
      }
    }
    return m_countedPlace;
  }

  // Where the token just read began; moves past it.
  JsonPlace tokenPlace() {
    const char* start = m_previousEnd;
    while (start < m_furthest && std::string_view(" \t\r\n,:").find(*start) != std::string_view::npos) {
      ++start;
    }
    m_previousEnd = m_furthest;
    return placeOf(static_cast<std::size_t>(start - m_document.data()));
  }

  // The slot of the value just read: the root, the next element of an array,
  // or the value of the last key of an object.
  LocatedValue& slot() {
    if (m_open.empty()) {
      return m_root;
    }
    LocatedValue& parent = *m_open.back();
    if (parent.scalar.is_array()) {
      parent.elements.emplace_back();
      return parent.elements.back();
    }
    return parent.members.back().value;
  }

  template <typename Value>
  bool scalar(Value&& value) {
    const JsonPlace where = tokenPlace();
    LocatedValue& target = slot();
    target.scalar = std::forward<Value>(value);
    target.place = where;
    return true;
  }

  bool open(nlohmann::json&& empty) {
    const JsonPlace where = tokenPlace();
    if (m_open.size() == deepest) {
      throw LocatedJsonError("nested deeper than " + std::to_string(deepest) + " levels", where);
    }
    LocatedValue& target = slot();
    target.scalar = std::move(empty);
    target.place = where;
    m_open.push_back(&target);
    return true;
  }

  bool close() {
    m_previousEnd = m_furthest;
    m_open.pop_back();
    return true;
  }

  // Far deeper than any profile, and shallow enough that the tree, which is
  // taken apart recursively, cannot exhaust the stack.
  static constexpr std::size_t deepest = 64;

  std::string_view m_document;
  std::size_t m_counted = 0;
  JsonPlace m_countedPlace{1, 1};
  const char* m_furthest;
  const char* m_previousEnd;
  LocatedValue m_root;
  // The objects and arrays being read, innermost last. Their vectors grow
  // only at the innermost, so the pointers to the outer ones stay valid.
  std::vector<LocatedValue*> m_open;
};

}  // namespace

LocatedValue readLocatedJson(std::string_view document) {
  TreeBuilder builder(document);
  const CountingIterator begin(document.data(), builder.furthest());
  const CountingIterator end(document.data() + document.size(), builder.furthest());
  nlohmann::json::sax_parse(begin, end, &builder);
  return std::move(builder.root());
}

}  // namespace Private
}  // namespace Display
}  // namespace Zalt
