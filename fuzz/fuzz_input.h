// What every fuzz target shares: reading choices from the fuzzer's bytes,
// a message UI that shows nothing, and a stop that the fuzzer reports.
#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>

#include "varnel/messages.h"

namespace varnel::fuzzing {

// Takes choices and values off the front of the input.
class FuzzInput {
 public:
  FuzzInput(const uint8_t* data, size_t size) : data_(data), size_(size) {}

  // A choice in 0..count-1 (0 when the input is used up).
  unsigned Choice(unsigned count) {
    if (size_ == 0) {
      return 0;
    }
    --size_;
    return *data_++ % count;
  }
  // The next sizeof(T) bytes as a T (zeros past the end).
  template <class T>
  T Raw() {
    T value{};
    const size_t n = size_ < sizeof(T) ? size_ : sizeof(T);
    std::memcpy(&value, data_, n);
    data_ += n;
    size_ -= n;
    return value;
  }
  // Everything left, as text.
  std::string Rest() {
    std::string rest(reinterpret_cast<const char*>(data_), size_);
    data_ += size_;
    size_ = 0;
    return rest;
  }

 private:
  const uint8_t* data_;
  size_t size_;
};

// Shows nothing: the targets report what they check themselves.
class SilentUi : public MessageUi {
 public:
  void ShowErrForm(FrmShowErr&) override {}
  void ShowInforForm(FrmShowInfor&) override {}
  int32_t MsgBox(const std::string&, int32_t, const std::string&) override { return 1; }
};

inline void InstallSilentUi() {
  static const bool installed = [] {
    SetMessageUi(std::make_shared<SilentUi>());
    return true;
  }();
  (void)installed;
}

// Stops the run so that the fuzzer records the input as a crash.
[[noreturn]] inline void Violated(const char* what, std::string_view detail) {
  std::fprintf(stderr, "violated: %s\n  %.*s\n", what, static_cast<int>(detail.size()),
               detail.data());
  std::abort();
}

}  // namespace varnel::fuzzing
