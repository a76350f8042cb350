#include <windows.h>

#include <ole2.h>

#include "component/class_factory.h"
#include "component/com.h"
#include "component/registration.h"
#include "component/typeinfo.h"

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
