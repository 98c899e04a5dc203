#include "lang/project/json_tree.h"

#include <algorithm>
#include <iterator>
#include <nlohmann/json.hpp>
#include <utility>

#include "lang/unicode/byte_order_mark.h"

namespace KelmoLibs::Lang {
namespace {

using nlohmann::json;

constexpr std::size_t kDeepest = 16;

// An iterator that tells how far the reader has come. The reader takes a byte by ++.
class CountingIterator {
 public:
  // NOLINTBEGIN(readability-identifier-naming): the names that iterators have
  using iterator_category = std::input_iterator_tag;
  using value_type = char;
  using difference_type = std::ptrdiff_t;
  using pointer = const char*;
  using reference = const char&;
  // NOLINTEND(readability-identifier-naming)

  CountingIterator(const char* position, std::size_t* count) : position_(position), count_(count) {}

  reference operator*() const { return *position_; }
  CountingIterator& operator++() {
    ++position_;
    ++*count_;
    return *this;
  }
  friend bool operator==(const CountingIterator& left, const CountingIterator& right) {
    return left.position_ == right.position_;
  }
  friend bool operator!=(const CountingIterator& left, const CountingIterator& right) {
    return !(left == right);
  }

 private:
  const char* position_;
  std::size_t* count_;
};

// Builds the tree. The reader reports each part when it has read it, so that the part begins at the
// first byte behind the part before that is no blank, colon or comma.
class Builder : public nlohmann::json_sax<json> {
 public:
  Builder(std::string_view bytes, const std::size_t& read) : bytes_(bytes), read_(read) {
    last_ = bytes.size() - WithoutByteOrderMark(bytes).size();  // the reader skips the mark
  }

  JsonValue& Root() { return root_; }
  std::size_t FaultAt() const { return faultAt_; }

  bool null() override { return Add(JsonValue::Kind::kNull) != nullptr; }
  bool boolean(bool /*value*/) override { return Add(JsonValue::Kind::kBoolean) != nullptr; }
  bool number_integer(number_integer_t value) override {
    return Number(static_cast<double>(value));
  }
  bool number_unsigned(number_unsigned_t value) override {
    return Number(static_cast<double>(value));
  }
  bool number_float(number_float_t value, const string_t& /*text*/) override {
    return Number(value);
  }
  bool string(string_t& value) override {
    JsonValue* const added = Add(JsonValue::Kind::kString);
    added->text = std::move(value);
    return true;
  }
  bool binary(binary_t& /*value*/) override { return false; }
  bool start_object(std::size_t /*size*/) override { return Open(JsonValue::Kind::kObject); }
  bool start_array(std::size_t /*size*/) override { return Open(JsonValue::Kind::kArray); }
  bool key(string_t& name) override {
    JsonValue value;
    value.kind = JsonValue::Kind::kString;
    value.begin = TakeBegin();
    value.end = read_;
    value.text = std::move(name);
    open_.back()->names.push_back(std::move(value));
    return true;
  }
  bool end_object() override { return Close(); }
  bool end_array() override { return Close(); }
  bool parse_error(std::size_t /*position*/, const std::string& /*token*/,
                   const json::exception& /*error*/) override {
    faultAt_ = TakeBegin();
    return false;
  }

 private:
  // The begin of the part that was just read. The next part begins behind it.
  std::size_t TakeBegin() {
    const std::size_t begin = bytes_.find_first_not_of(" \t\r\n:,", last_);
    last_ = read_;
    return std::min(begin, bytes_.size());
  }

  JsonValue* Add(JsonValue::Kind kind) {
    JsonValue value;
    value.kind = kind;
    value.begin = TakeBegin();
    value.end = read_;
    if (open_.empty()) {
      root_ = std::move(value);
      return &root_;
    }
    return &open_.back()->items.emplace_back(std::move(value));
  }

  bool Number(double value) {
    JsonValue* const added = Add(JsonValue::Kind::kNumber);
    added->number = value;
    last_ = bytes_.find_first_of(" \t\r\n,]}", added->begin);  // the reader has read one byte more
    added->end = last_ = std::min(last_, bytes_.size());
    return true;
  }

  bool Open(JsonValue::Kind kind) {
    JsonValue* const added = Add(kind);
    if (open_.size() == kDeepest) {
      faultAt_ = added->begin;
      return false;
    }
    open_.push_back(added);
    return true;
  }

  bool Close() {
    TakeBegin();
    open_.back()->end = read_;
    open_.pop_back();
    return true;
  }

  std::string_view bytes_;
  const std::size_t& read_;
  JsonValue root_;
  std::vector<JsonValue*> open_;  // each is the last item of the one before, so that none moves
  std::size_t last_ = 0;          // end of the part before
  std::size_t faultAt_ = 0;
};

}  // namespace

JsonResult ReadJson(std::string_view bytes) {
  std::size_t read = 0;
  Builder builder(bytes, read);
  const bool isWhole =
      json::sax_parse(CountingIterator(bytes.data(), &read),
                      CountingIterator(bytes.data() + bytes.size(), &read), &builder);
  if (!isWhole) {
    return {std::nullopt, builder.FaultAt()};
  }
  return {std::move(builder.Root()), 0};
}

}  // namespace KelmoLibs::Lang
