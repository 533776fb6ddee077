// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/jet/Fault.h"

#include <QtEndian>

#include <cstddef>
#include <cstdint>

namespace jet
{

/// A run of bytes that belongs to someone else, read little-endian. Whatever leads outside of it raises a Fault.
class Bytes
{
public:
    Bytes() = default;
    Bytes(const unsigned char *data, std::size_t size) : data_(data), size_(size) {}

    const unsigned char *data() const { return data_; }
    std::size_t size() const { return size_; }

    std::uint8_t byteAt(std::size_t offset) const { return read<std::uint8_t>(offset); }
    std::uint16_t shortAt(std::size_t offset) const { return read<std::uint16_t>(offset); }
    std::uint32_t longAt(std::size_t offset) const { return read<std::uint32_t>(offset); }
    std::uint64_t eightAt(std::size_t offset) const { return read<std::uint64_t>(offset); }

    Bytes part(std::size_t offset, std::size_t length) const
    {
        if (offset > size_ || length > size_ - offset) {
            failOutOfBounds();
        }
        return {data_ + offset, length};
    }
    Bytes from(std::size_t offset) const { return part(offset, offset > size_ ? 0 : size_ - offset); }

private:
    template <typename Number> Number read(std::size_t offset) const
    {
        if (offset > size_ || sizeof(Number) > size_ - offset) {
            failOutOfBounds();
        }
        return qFromLittleEndian<Number>(data_ + offset);
    }

    const unsigned char *data_ = nullptr;
    std::size_t size_ = 0;
};

} // namespace jet
