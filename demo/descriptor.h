#pragma once

#include <utility>

namespace quenchly::demo {

/// Owns a file descriptor.
class Descriptor {
public:
    Descriptor() = default;
    explicit Descriptor(int number) : number_(number) {}
    Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept
    {
        std::swap(number_, other.number_);
        return *this;
    }
    ~Descriptor();

    int number() const { return number_; }

private:
    int number_ = -1;
};

/// Makes calls on a descriptor return instead of waiting; false when it is not one.
bool neverBlock(int descriptor);

}  // namespace quenchly::demo
