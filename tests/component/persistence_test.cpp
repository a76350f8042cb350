#include <algorithm>
#include <cstring>

#include "tests/component/test_bag.h"
#include "tests/component/test_container.h"

namespace sylvex::test {
namespace {

struct Property {
    std::wstring name;
    Value standard;
    Value changed;
};

/// The properties in the order in which they are saved, with what a control has that was loaded from nothing in a
/// container whose font is Arial 12, and what Change() gives it.
std::vector<Property> Properties()
{
    return {{L"Appearance", 1, 0},
            {L"BorderStyle", 0, 1},
            {L"Checkboxes", false, true},
            {L"Enabled", true, false},
            {L"Font", NewFont(L"Arial", 12).Get(), NewFont(L"Courier New", 15, true).Get()},
            {L"FullRowSelect", false, true},
            {L"HideSelection", true, false},
            {L"HotTracking", false, true},
            {L"LabelEdit", 1, 0},
            {L"LineStyle", 1, 0},
            {L"MouseIcon", Value::Nothing(), NewPicture().Get()},
            {L"MousePointer", 0, 99},
            {L"PathSeparator", L"\\", L"::"},
            {L"FileFilter", L"", L"*.txt;*.doc"},
            {L"Picture", Value::Nothing(), NewPicture().Get()},
            {L"DragDropEnable", false, true},
            {L"BackColor", static_cast<int>(0x8000000F), static_cast<int>(0x80000005)},
            {L"RecursiveCheck", true, false}};
}

std::string Lines(const std::function<Value(const Property&)>& valueOf)
{
    std::string lines;
    for (const Property& property : Properties())
        lines += Narrow(property.name) + "=" + TextOf(valueOf(property)) + "\n";
    return lines;
}

std::vector<std::string> Names()
{
    std::vector<std::string> names{"hWnd"};
    for (const Property& property : Properties())
        names.push_back(Narrow(property.name));
    return names;
}

void Change(const Embedded& embedded)
{
    for (const auto& [name, standard, changed] : Properties()) {
        const bool isObject = V_VT(&changed.Raw()) == VT_DISPATCH;
        isObject ? embedded.Members().Set(name.c_str(), changed) : embedded.Members().Put(name.c_str(), changed);
    }
}

/// A value that a bag holds as no script would write it.
Value Raw(VARTYPE type, IUnknown* object = nullptr)
{
    VARIANT value{};
    V_VT(&value) = type;
    V_UNKNOWN(&value) = object;
    return Value(value);
}

class Persistence : public testing::Test {
protected:
    Persistence()
    {
        container.SetAmbient(DISPID_AMBIENT_FONT, font.Get());
        saved.SetSite();
        loaded.SetSite();
    }
    HRESULT LoadBag() { return loaded.As<IPersistPropertyBag>()->Load(&bag, nullptr); }
    HRESULT LoadStream(const ComPtr<IStream>& stream)
    {
        Rewind(stream);
        return loaded.As<IPersistStreamInit>()->Load(stream.Get());
    }
    /// What the other one saves in a stream.
    ComPtr<IStream> Saved()
    {
        const ComPtr<IStream> stream = NewStream();
        EXPECT_HRESULT_SUCCEEDED(saved.As<IPersistStreamInit>()->Save(stream.Get(), TRUE));
        return stream;
    }
    HRESULT SaveBag(const Embedded& embedded, TestBag& into, BOOL all = FALSE)
    {
        return embedded.As<IPersistPropertyBag>()->Save(&into, TRUE, all);
    }
    std::string Loaded() const
    {
        return Lines([&](const Property& property) { return loaded.Members().Get(property.name.c_str()); });
    }
    void ExpectLoaded(const std::string& line) const
    {
        EXPECT_NE(Loaded().find(line), std::string::npos) << line << " in " << Loaded();
    }
    bool IsDirty(const Embedded& embedded) { return embedded.As<IPersistStreamInit>()->IsDirty() == S_OK; }

    TestBag bag;
    const ComPtr<IFontDisp> font = NewFont(L"Arial", 12);
    TestContainer container;
    Embedded saved{container};
    Embedded loaded{container};
};

TEST_F(Persistence, EmptyBagGivesTheDefaultsInOrder)
{
    Change(loaded);
    EXPECT_EQ(LoadBag(), S_OK);
    EXPECT_EQ(Loaded(), Lines(&Property::standard));
    EXPECT_EQ(bag.read, Names());
}

TEST_F(Persistence, BagHoldsWhatDiffersFromTheDefaults)
{
    saved.InitNew();
    LoadBag();
    TestBag none;
    ASSERT_HRESULT_SUCCEEDED(SaveBag(loaded, none));
    EXPECT_EQ(none.written, std::vector<std::string>{"RecursiveCheck"}) << "True is -1, the default is 1";

    Change(saved);
    ASSERT_HRESULT_SUCCEEDED(SaveBag(saved, bag));
    std::vector<std::string> names = Names();
    names.erase(names.begin());
    EXPECT_EQ(bag.written, names);
    TestBag all;
    ASSERT_HRESULT_SUCCEEDED(SaveBag(saved, all, TRUE));
    EXPECT_EQ(all.written, Names());
    EXPECT_EQ(LoadBag(), S_OK);
    EXPECT_EQ(Loaded(), Lines(&Property::changed));
}

TEST_F(Persistence, BagWithTextsAndNumbersOfOtherTypesIsConverted)
{
    bag.converts = false;
    const struct {
        const char* name;
        Value given;
        const char* loaded;
    } cases[] = {{"Appearance", L"0", "0"},     {"Checkboxes", L"True", "-1"},
                 {"HotTracking", 1, "-1"},      {"HideSelection", 0, "0"},
                 {"FileFilter", 12, "12"},      {"BackColor", L"2147483653", "-2147483643"},
                 {"RecursiveCheck", L"0", "0"}, {"DragDropEnable", 7, "-1"}};
    for (const auto& [name, given, text] : cases)
        bag.Set(name, given);
    EXPECT_EQ(LoadBag(), S_OK);
    for (const auto& [name, given, text] : cases)
        ExpectLoaded(name + std::string("=") + text + "\n");
}

TEST_F(Persistence, JunkInABagGivesWayToTheDefaults)
{
    for (const bool converts : {true, false}) {
        for (const std::string& name : Names()) {
            if (name != "PathSeparator" && name != "FileFilter") bag.Set(name, L"no such value");
        }
        bag.Set("LabelEdit", 77);
        bag.Set("LineStyle", -5);
        bag.Set("MousePointer", 1000000);
        bag.converts = converts;
        EXPECT_EQ(LoadBag(), S_OK);
        EXPECT_EQ(Loaded(), Lines(&Property::standard)) << converts;
    }
    bag.Set("Font", Raw(VT_UNKNOWN, NewStream().Get()));
    bag.Set("PathSeparator", Raw(VT_NULL));
    EXPECT_EQ(LoadBag(), S_OK);
    EXPECT_EQ(Loaded(), Lines(&Property::standard));
}

constexpr CLSID kPlanted = {0x6A0F3C11, 0x52D7, 0x4E0B, {0x9B, 0x1D, 0x3F, 0x60, 0x7C, 0x5A, 0x21, 0xE4}};
constexpr CLSID kFontClass = {0x0BE35203, 0x8F91, 0x11CE, {0x9D, 0xE3, 0x00, 0xAA, 0x00, 0x4B, 0xB8, 0x51}};
constexpr CLSID kPictureClass = {0x0BE35204, 0x8F91, 0x11CE, {0x9D, 0xE3, 0x00, 0xAA, 0x00, 0x4B, 0xB8, 0x51}};

// A saved state whose objects can be tampered with.
class SavedObjects : public Persistence {
protected:
    SavedObjects()
    {
        saved.InitNew();
        Change(saved);
        SIZEL extent{4000, 3000};
        saved.object->SetExtent(DVASPECT_CONTENT, &extent);
        const ComPtr<IStream> stream = Saved();
        STATSTG state{};
        stream->Stat(&state, STATFLAG_NONAME);
        bytes.resize(state.cbSize.LowPart);
        Rewind(stream);
        stream->Read(bytes.data(), state.cbSize.LowPart, nullptr);
    }
    // Where the next object of the class stands in the state.
    std::size_t Find(const CLSID& id, std::size_t from = 0) const
    {
        const auto* const first = reinterpret_cast<const char*>(&id);
        const auto found =
            std::search(bytes.begin() + static_cast<std::ptrdiff_t>(from), bytes.end(), first, first + sizeof id);
        EXPECT_NE(found, bytes.end());
        return static_cast<std::size_t>(found - bytes.begin());
    }
    template <class Value>
    void Put(std::size_t at, const Value& value)
    {
        std::memcpy(bytes.data() + at, &value, sizeof value);
    }
    HRESULT LoadBytes(const ComPtr<IStream>& stream = NewStream())
    {
        stream->Write(bytes.data(), static_cast<ULONG>(bytes.size()), nullptr);
        return LoadStream(stream);
    }

    std::vector<char> bytes;
};

TEST_F(SavedObjects, AreOnlyEverTheSystemsOwnFontsAndPictures)
{
    PlantedClass planted;
    DWORD cookie = 0;
    CoRegisterClassObject(kPlanted, &planted, CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &cookie);
    Put(Find(kFontClass), kPlanted);
    Put(Find(kPictureClass), kPlanted);
    Put(Find(kPictureClass), kPlanted);
    EXPECT_EQ(LoadBytes(), S_OK);
    std::string expected = Lines(&Property::changed);
    const auto replace = [&](const std::string& text, const std::string& by) {
        expected.replace(expected.find(text), text.size(), by);
    };
    replace(TextOf(NewFont(L"Courier New", 15, true).Get()), TextOf(font.Get()));
    replace("MouseIcon=picture 3", "MouseIcon=none");
    replace("Picture=picture 3", "Picture=none");
    EXPECT_EQ(Loaded(), expected) << "what stands behind them is loaded";

    for (const char* const name : {"Font", "MouseIcon", "Picture"})
        bag.SetClass(name, kPlanted);
    EXPECT_EQ(LoadBag(), S_OK);
    EXPECT_EQ(Loaded(), Lines(&Property::standard));
    EXPECT_EQ(planted.created, 0);
    CoRevokeClassObject(cookie);
}

TEST_F(SavedObjects, ThatLieAboutTheirSizeAreRefused)
{
    const std::vector<char> whole = bytes;
    const std::size_t picture = Find(kPictureClass) + sizeof(CLSID) + 4;
    for (const DWORD size : {0xFFFFFFFFu, 0x7FFFFFFFu, 0x10000000u}) {
        Put(picture, size);
        EXPECT_EQ(LoadBytes(), STG_E_DOCFILECORRUPT);
        EXPECT_EQ(Loaded(), Lines(&Property::standard));
    }
    bytes = whole;
    bytes.resize(Find(kFontClass) + sizeof(CLSID) + 11);
    Put(bytes.size() - 1, '\xFF');
    Put(16, static_cast<DWORD>(bytes.size() - 20));
    EXPECT_EQ(LoadBytes(), STG_E_DOCFILECORRUPT);
}

TEST_F(SavedObjects, WhoseHeadersPromiseMoreThanTheyHoldAreLeftOut)
{
    const std::size_t picture = Find(kPictureClass) + sizeof(CLSID) + 8;
    Put(picture, BITMAPFILEHEADER{0x4D42, 0, 0, 0, sizeof(BITMAPFILEHEADER) + sizeof(BITMAPINFOHEADER)});
    Put(picture + sizeof(BITMAPFILEHEADER),
        BITMAPINFOHEADER{sizeof(BITMAPINFOHEADER), 3000, 3000, 1, 32, BI_RGB, 0, 0, 0, 0, 0});
    // The place of the only image in the icon.
    Put(Find(kPictureClass, picture) + sizeof(CLSID) + 8 + 18, DWORD{0x00FFFFFF});
    EXPECT_EQ(LoadBytes(), S_OK);
    ExpectLoaded("MouseIcon=none\nMousePointer=99\n");
    ExpectLoaded("Picture=none\nDragDropEnable=-1\n");
}

TEST_F(SavedObjects, HoldNoFontBeyondTheLargestSize)
{
    Put(Find(kFontClass) + sizeof(CLSID) + 6, DWORD{268550000});
    EXPECT_EQ(LoadBytes(), S_OK);
    ExpectLoaded(" 16380 bold\n");
    bag.Set("Font", Raw(VT_UNKNOWN, NewFont(L"Courier New", 26855, true).Get()));
    EXPECT_EQ(LoadBag(), S_OK);
    ExpectLoaded(" 16380 bold\n");
}

TEST_F(SavedObjects, GoThroughAStreamUpToTheirEnd)
{
    ULARGE_INTEGER most{};
    EXPECT_HRESULT_SUCCEEDED(saved.As<IPersistStreamInit>()->GetSizeMax(&most));
    EXPECT_EQ(most.QuadPart, bytes.size());
    bytes.push_back('!');
    const ComPtr<IStream> stream = NewStream();
    EXPECT_EQ(LoadBytes(stream), S_OK);
    EXPECT_EQ(Loaded(), Lines(&Property::changed));
    char behind = 0;
    stream->Read(&behind, 1, nullptr);
    EXPECT_EQ(behind, '!');
    SIZEL extent{};
    loaded.object->GetExtent(DVASPECT_CONTENT, &extent);
    EXPECT_EQ(extent.cx, 4000);
}

TEST_F(Persistence, RoundTripThroughAStorageCarriesTheClass)
{
    saved.InitNew();
    Change(saved);
    const ComPtr<IStorage> storage = NewStorage();
    ASSERT_HRESULT_SUCCEEDED(saved.As<IPersistStorage>()->Save(storage.Get(), FALSE));
    ASSERT_HRESULT_SUCCEEDED(saved.As<IPersistStorage>()->SaveCompleted(storage.Get()));
    EXPECT_FALSE(IsDirty(saved));
    CLSID classId{};
    ReadClassStg(storage.Get(), &classId);
    EXPECT_TRUE(classId == __uuidof(::Sylvex));
    EXPECT_EQ(loaded.As<IPersistStorage>()->Load(storage.Get()), S_OK);
    EXPECT_EQ(Loaded(), Lines(&Property::changed));
    loaded.control->put_HotTracking(VARIANT_FALSE);
    ASSERT_HRESULT_SUCCEEDED(loaded.As<IPersistStorage>()->Save(storage.Get(), TRUE));
    ASSERT_HRESULT_SUCCEEDED(loaded.As<IPersistStorage>()->SaveCompleted(nullptr));
    EXPECT_FALSE(IsDirty(loaded)) << "saved where it came from";

    EXPECT_EQ(loaded.As<IPersistStorage>()->Load(NewStorage().Get()), STG_E_FILENOTFOUND);
    EXPECT_EQ(Loaded(), Lines(&Property::standard));
}

TEST_F(SavedObjects, CutShortAnywhereAreAnErrorAndLeaveTheDefaults)
{
    const std::vector<char> whole = bytes;
    for (std::size_t length = 0; length < whole.size(); length += length < 200 ? 1 : 97) {
        bytes.assign(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
        ASSERT_EQ(LoadBytes(), STG_E_READFAULT) << length;
    }
    EXPECT_EQ(Loaded(), Lines(&Property::standard));
}

TEST_F(SavedObjects, OfAnotherKindOrVersionAreAnErrorAndDamageNeverBreaksTheControl)
{
    const std::vector<char> whole = bytes;
    const struct {
        std::size_t at;
        char value;
        HRESULT expected;
    } cases[] = {{0, 'X', STG_E_INVALIDHEADER}, {4, 2, STG_E_OLDDLL}, {5, 1, STG_E_OLDDLL}};
    for (const auto& [at, value, expected] : cases) {
        bytes = whole;
        bytes[at] = value;
        Change(loaded);
        EXPECT_EQ(LoadBytes(), expected);
        EXPECT_EQ(Loaded(), Lines(&Property::standard));
    }
    for (std::size_t at = 16; at < 200; ++at) {
        bytes = whole;
        bytes[at] = '\xFF';
        LoadBytes();
        ASSERT_HRESULT_SUCCEEDED(loaded.control->put_Checkboxes(VARIANT_TRUE)) << at;
    }
}

TEST_F(Persistence, DirtyMeansChangedSinceTheLastSave)
{
    EXPECT_FALSE(IsDirty(saved));
    saved.InitNew();
    EXPECT_TRUE(IsDirty(saved));
    const auto persist = saved.As<IPersistStreamInit>();
    persist->Save(NewStream().Get(), FALSE);
    EXPECT_TRUE(IsDirty(saved)) << "a copy only";
    persist->Save(NewStream().Get(), TRUE);
    EXPECT_FALSE(IsDirty(saved));
    saved.control->put_HotTracking(VARIANT_TRUE);
    EXPECT_TRUE(IsDirty(saved));
    persist->Save(NewStream().Get(), TRUE);

    const Value own = saved.Members().Get(L"Font");
    EXPECT_FALSE(IsDirty(saved));
    own.Put(L"Bold", true);
    EXPECT_TRUE(IsDirty(saved));
    TestBag written;
    SaveBag(saved, written);
    EXPECT_FALSE(IsDirty(saved));

    Change(loaded);
    LoadBag();
    EXPECT_FALSE(IsDirty(loaded));
    EXPECT_HRESULT_SUCCEEDED(saved.control->Enumerate());
    EXPECT_FALSE(IsDirty(saved)) << "what is in the tree is not saved";
}

TEST_F(SavedObjects, AreLoadedWithoutNotices)
{
    const auto point = PointOf(loaded.Members(), IID_IPropertyNotifySink);
    DWORD cookie = 0;
    ASSERT_HRESULT_SUCCEEDED(point->Advise(static_cast<IPropertyNotifySink*>(&container), &cookie));
    container.TakeLog();
    LoadBag();
    LoadBytes();
    EXPECT_EQ(container.TakeLog(), "");
    loaded.control->put_HotTracking(VARIANT_FALSE);
    EXPECT_EQ(container.TakeLog(), "OnChanged\n");
    point->Unadvise(cookie);
}

TEST_F(Persistence, FontOfTheContainerIsCopied)
{
    LoadBag();
    loaded.Members().Get(L"Font").Put(L"Italic", true);
    EXPECT_FALSE(Value(font.Get()).Get(L"Italic").Flag());
    ASSERT_HRESULT_SUCCEEDED(SaveBag(loaded, bag));
    EXPECT_EQ(bag.written, (std::vector<std::string>{"Font", "RecursiveCheck"}));

    // A container that sites last gives its font, too.
    Embedded late(container);
    TestBag none;
    ASSERT_HRESULT_SUCCEEDED(late.As<IPersistPropertyBag>()->Load(&none, nullptr));
    ASSERT_HRESULT_SUCCEEDED(late.SetSite());
    ASSERT_HRESULT_SUCCEEDED(SaveBag(late, none));
    EXPECT_EQ(none.written, std::vector<std::string>{"RecursiveCheck"}) << "no font of its own";
}

TEST_F(Persistence, WindowNumberIsSavedFromDesignTime)
{
    container.SetAmbient(DISPID_AMBIENT_USERMODE, false);
    LoadBag();
    ASSERT_HRESULT_SUCCEEDED(loaded.control->put_hWnd(70000));
    ASSERT_HRESULT_SUCCEEDED(SaveBag(loaded, bag));
    TestBag second;
    ASSERT_HRESULT_SUCCEEDED(saved.As<IPersistPropertyBag>()->Load(&bag, nullptr));
    ASSERT_HRESULT_SUCCEEDED(SaveBag(saved, second));
    EXPECT_EQ(V_I4(&second.Entry("hWnd")), 70000);
}

TEST_F(Persistence, ControlThatNobodyInitialisedIsSavedAsANewOne)
{
    EXPECT_EQ(LoadStream(Saved()), S_OK);
    ExpectLoaded("RecursiveCheck=-1\n");
}

}  // namespace
}  // namespace sylvex::test
