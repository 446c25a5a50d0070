// The C++ run-time in the DLL sets 72 KiB aside, to be able to throw when memory has run out, and leaves them to the end of
// the process. A host that loads and unloads the module again and again would lose them every time, so they are given back.
namespace __gnu_cxx
{
// The run-time's own way to give back what it holds; it has no header.
void __freeres();
} // namespace __gnu_cxx

namespace
{
class CEmergencyPoolOwner
{
public:
    ~CEmergencyPoolOwner()
    {
        __gnu_cxx::__freeres();
    }
};

// Made before every object of ours, and so the last to go: nothing can throw after it.
constexpr int firstOfAll = 101;
__attribute__((init_priority(firstOfAll))) const CEmergencyPoolOwner owner;
} // namespace
