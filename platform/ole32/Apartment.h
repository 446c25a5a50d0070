// Which threads may use COM.
#pragma once

namespace platform
{
// True for a thread that initialised COM, and for every other one while some thread keeps the multithreaded apartment.
bool IsComInitialised() noexcept;
} // namespace platform
