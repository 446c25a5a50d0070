// What is alive: one count for each kind of object that the stand-in hands out, so that a test can show that an
// operation left nothing behind.
#pragma once

namespace platform::testing
{
enum class Account
{
    Bstr,
    TaskMemory,
    FileHandle,
    MutexHandle,
    RegistryKey,
    Module,
    XmlObject, // documents and node objects that COM clients hold
    RpcString,
    Window,
    WlanHandle,
    WlanMemory,
    Count_,
};

// Adds nChange objects of the kind; atomic.
void ChangeAccount(Account account, long nChange) noexcept;
long LiveObjects(Account account) noexcept;
} // namespace platform::testing
