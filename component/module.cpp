#include <windows.h>

#include <ole2.h>

#include "com/module_lock.h"
#include "component/border/typeinfo.h"
#include "component/class_factory.h"
#include "component/registration.h"

#include <pthread.h>

/// What the compiler's thread library stores for a thread in the index that it allocates for each module.
extern "C" void* __pth_gpointer_locked(pthread_t thread);

namespace {

/// Gives back that index, which the library itself never does: a process has about a thousand, and every load of the
/// component would take one.
class ThreadIndex {
public:
    ThreadIndex() = default;
    ~ThreadIndex()
    {
        const void* const own = __pth_gpointer_locked(pthread_self());
        for (DWORD index = 0; own && index < TLS_MINIMUM_AVAILABLE + kMoreIndices; ++index) {
            if (TlsGetValue(index) != own) continue;
            TlsFree(index);
            return;
        }
    }
    ThreadIndex(const ThreadIndex&) = delete;
    ThreadIndex& operator=(const ThreadIndex&) = delete;

private:
    static constexpr DWORD kMoreIndices = 1024;
};

// Made before anything else in the module, so gone after it.
[[gnu::init_priority(101)]] const ThreadIndex threadIndex;

}  // namespace

// Thread notifications stay on: the state that is kept per thread is freed by them.
BOOL WINAPI DllMain(HINSTANCE, DWORD, LPVOID)
{
    return TRUE;
}

STDAPI DllGetClassObject(REFCLSID classId, REFIID id, LPVOID* factory)
{
    return sylvex::CreateClassFactory(classId, id, factory);
}

STDAPI DllCanUnloadNow()
{
    if (sylvex::ModuleLock::Count() != 0) return S_FALSE;
    sylvex::ReleaseTypeInfos();
    return S_OK;
}

STDAPI DllRegisterServer()
{
    return sylvex::RegisterComponent(sylvex::Scope::Machine);
}

STDAPI DllUnregisterServer()
{
    return sylvex::UnregisterComponent(sylvex::Scope::Machine);
}

// The command line "user" stands for this user only; any other for everybody on the machine.
STDAPI DllInstall(BOOL install, LPCWSTR commandLine)
{
    const bool user = commandLine && lstrcmpiW(commandLine, L"user") == 0;
    const sylvex::Scope scope = user ? sylvex::Scope::User : sylvex::Scope::Machine;
    return install ? sylvex::RegisterComponent(scope) : sylvex::UnregisterComponent(scope);
}
