#pragma once

#include <utility>

namespace quenchly {

/// Owns an open file descriptor; a negative number is none.
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
    ~Descriptor() { close(); }

    int number() const { return number_; }

    void close();

private:
    int number_ = -1;
};

/// Makes calls on a descriptor return instead of waiting; false when it is not one.
bool neverBlock(int descriptor);

}  // namespace quenchly
