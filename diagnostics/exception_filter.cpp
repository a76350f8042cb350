#include "diagnostics/exception_filter.h"

#include "diagnostics/exception_names.h"
#include "diagnostics/trap.h"

namespace sylvex {

namespace {

bool IsWanted()
{
    return CurrentErrorState().vantorHasInitialised;
}

constexpr ExceptionListener kListener{&IsWanted, &vantorExceptionFilter};

}  // namespace

void vantorExceptionFilter(std::uint32_t code)
{
    throw RuntimeError{ExceptionNumber(code), ExceptionName(code), L"vantorExceptionFilter"};
}

void InstallExceptionFilter(void (*install)(const ExceptionListener& listener))
{
    if (CurrentErrorState().vantorHasInitialised) return;
    install(kListener);
    CurrentErrorState().vantorHasInitialised = true;
}

}  // namespace sylvex
