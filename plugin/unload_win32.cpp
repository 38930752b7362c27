// Gives back what the C++ library that is linked into the DLL keeps for itself, when the DLL goes.
namespace __gnu_cxx {
void __freeres();  // its memory for exceptions; libstdc++ leaves that to the end of the process
}

namespace {

struct AtUnload {
    ~AtUnload() { __gnu_cxx::__freeres(); }
} atUnload;

}  // namespace
