// SPDX-License-Identifier: GPL-3.0-or-later
// With MinGW the storage of thread_local objects is released through one key of the thread library and their destructors run
// through another, in the order in which the keys were made. Usually the storage has the first key, and each thread that ends
// with such an object (QRegularExpression has one) destroys released memory. This takes the key of the destructors before
// anything uses thread_local storage.
#include <cxxabi.h>

extern "C" int __cxa_thread_atexit(void (*destructor)(void *), void *object, void *library) noexcept;

namespace
{

constexpr int FirstPriority = 101;

__attribute__((constructor(FirstPriority))) void makeKeyOfDestructors()
{
    __cxa_thread_atexit([](void *) {}, nullptr, nullptr);
}

} // namespace
