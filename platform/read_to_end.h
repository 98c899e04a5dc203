// The reading of files whose size may change meanwhile.
#pragma once

#include <cstddef>
#include <cstring>
#include <memory>
#include <utility>

#include "platform/native_files.h"

namespace KelmoLibs::Localize {

/// Reads with `read(memory, room, count)` until it gives no byte; it returns a SystemError, and sets
/// the number of bytes that it read. `size` is that which the system reports. After an error `result`
/// is as before. Throws only std::bad_alloc.
template <class Reader>
SystemError ReadToEnd(std::size_t size, Reader read, FileBytes& result) {
  std::size_t capacity = size + 1;  // room for the read that finds the end
  FileBytes bytes{std::unique_ptr<char[]>(new char[capacity]), 0};
  for (;;) {
    std::size_t count = 0;
    const SystemError error = read(bytes.memory.get() + bytes.size, capacity - bytes.size, count);
    if (!error.IsNone()) {
      return error;
    }
    bytes.size += count;
    if (count == 0) {
      result = std::move(bytes);
      return {};
    }
    if (bytes.size == capacity) {
      std::unique_ptr<char[]> larger(new char[2 * capacity]);
      std::memcpy(larger.get(), bytes.memory.get(), bytes.size);
      bytes.memory = std::move(larger);
      capacity *= 2;
    }
  }
}

}  // namespace KelmoLibs::Localize
