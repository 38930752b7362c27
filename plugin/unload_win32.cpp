// Frees the memory of the statically linked C++ library when the DLL is unloaded.
namespace __gnu_cxx {
void __freeres();  // the emergency pool for exceptions, which libstdc++ never frees itself
}

namespace {

struct AtUnload {
    ~AtUnload() { __gnu_cxx::__freeres(); }
} atUnload;

}  // namespace
