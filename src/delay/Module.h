#pragma once

namespace orvantesco {

/// Base of the small building blocks that work on single samples in single precision inside a
/// feedback delay network. Blocks that work on vectors of 32 derive from DSPShell instead.
///
/// Memory is taken only by the operations that say so. Audio thread, but for those.
class Module {
 public:
  Module() = default;
  virtual ~Module() = default;
  Module(const Module&) = delete;
  Module& operator=(const Module&) = delete;

  /// Silence; settings stay.
  virtual void reset() noexcept = 0;
  /// Bytes of sample memory that the module owns.
  virtual int memorySize() const noexcept { return 0; }
};

}  // namespace orvantesco
