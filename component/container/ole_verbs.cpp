#include "component/container/ole_verbs.h"

#include <new>

#include "component/border/enumerator.h"
#include "component/container/property_pages.h"

namespace sylvex {

namespace {

struct Verb {
    LONG number;
    const wchar_t* name;
};

OLEVERB HandOut(const Verb& verb)
{
    return {verb.number, CopyForCaller(verb.name), MF_STRING | MF_ENABLED, OLEVERBATTRIB_ONCONTAINERMENU};
}

}  // namespace

LPOLESTR CopyForCaller(std::wstring_view text)
{
    void* const memory = CoTaskMemAlloc((text.size() + 1) * sizeof(wchar_t));
    if (!memory) throw std::bad_alloc();
    LPOLESTR const copy = static_cast<LPOLESTR>(memory);
    copy[text.copy(copy, text.size())] = L'\0';
    return copy;
}

ComPtr<IEnumOLEVERB> Verbs()
{
    using Enumerator = ListEnumerator<IEnumOLEVERB, OLEVERB, Verb>;
    std::vector<Verb> verbs{{OLEIVERB_PRIMARY, L"&Edit"}};
    if (!PropertyPages().empty()) verbs.push_back({kVerbProperties, L"&Properties..."});
    return Make<Enumerator>(std::move(verbs)).As<IEnumOLEVERB>();
}

}  // namespace sylvex
