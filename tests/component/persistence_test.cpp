#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

#include "tests/component/planted_class.h"
#include "tests/component/test_bag.h"
#include "tests/component/test_container.h"

namespace sylvex::test {
namespace {

std::string WithFont(const std::string& before, const ComPtr<IFontDisp>& font, const std::string& behind)
{
    return before + "Font=" + TextOf(font.Get()) + "\n" + behind;
}

// What a control shows that was loaded from nothing, in a container whose font is Arial 12.
std::string Defaults()
{
    return WithFont("Appearance=1\nBorderStyle=0\nCheckboxes=0\nEnabled=-1\n", NewFont(L"Arial", 12),
                    "FullRowSelect=0\nHideSelection=-1\nHotTracking=0\nLabelEdit=1\nLineStyle=1\nMouseIcon=none\n"
                    "MousePointer=0\nPathSeparator=\\\nFileFilter=\nPicture=none\nDragDropEnable=0\n"
                    "BackColor=-2147483633\nRecursiveCheck=-1\nBuildFileListFilter=*\n");
}

// After Change(), saving and loading.
std::string Changed()
{
    return WithFont("Appearance=0\nBorderStyle=1\nCheckboxes=-1\nEnabled=0\n", NewFont(L"Courier New", 15, true),
                    "FullRowSelect=-1\nHideSelection=0\nHotTracking=-1\nLabelEdit=0\nLineStyle=0\n"
                    "MouseIcon=picture 3\nMousePointer=99\nPathSeparator=::\nFileFilter=*.txt;*.doc\n"
                    "Picture=picture 3\nDragDropEnable=-1\nBackColor=1122867\nRecursiveCheck=0\n"
                    "BuildFileListFilter=*\n");
}

const std::vector<std::string> kNames{"hWnd",      "Appearance",     "BorderStyle",   "Checkboxes",    "Enabled",
                                      "Font",      "FullRowSelect",  "HideSelection", "HotTracking",   "LabelEdit",
                                      "LineStyle", "MouseIcon",      "MousePointer",  "PathSeparator", "FileFilter",
                                      "Picture",   "DragDropEnable", "BackColor",     "RecursiveCheck"};

class Text {
public:
    explicit Text(const wchar_t* text) : m_text(SysAllocString(text)) {}
    Text(const Text&) = delete;
    Text& operator=(const Text&) = delete;
    ~Text() { SysFreeString(m_text); }
    BSTR Get() const { return m_text; }

private:
    BSTR m_text;
};

void Change(const ComPtr<::_Sylvex>& control)
{
    control->put_Appearance(ccFlat);
    control->put_BorderStyle(ccFixedSingle);
    control->put_Checkboxes(VARIANT_TRUE);
    control->put_Enabled(VARIANT_FALSE);
    control->putref_Font(NewFont(L"Courier New", 15, true).Get());
    control->put_FullRowSelect(VARIANT_TRUE);
    control->put_HideSelection(VARIANT_FALSE);
    control->put_HotTracking(VARIANT_TRUE);
    control->put_LabelEdit(tvwAutomatic);
    control->put_LineStyle(tvwTreeLines);
    control->putref_MouseIcon(NewPicture().Get());
    control->put_MousePointer(static_cast<MousePointerConstants>(99));
    control->put_PathSeparator(Text(L"::").Get());
    control->put_FileFilter(Text(L"*.txt;*.doc").Get());
    control->putref_Picture(NewPicture().Get());
    control->put_DragDropEnable(VARIANT_TRUE);
    control->put_BackColor(0x112233);
    control->put_RecursiveCheck(VARIANT_FALSE);
    control->put_BuildFileListFilter(Text(L"*.txt").Get());
}

class Persistence : public testing::Test {
protected:
    Persistence()
    {
        container.font = NewFont(L"Arial", 12);
        saved.SetSite();
        loaded.SetSite();
    }
    HRESULT LoadBag() { return loaded.As<IPersistPropertyBag>()->Load(&bag, nullptr); }
    HRESULT LoadStream(const ComPtr<IStream>& stream)
    {
        Rewind(stream);
        return loaded.As<IPersistStreamInit>()->Load(stream.Get());
    }
    std::string Loaded() const { return PropertiesOf(loaded.control); }
    bool IsDirty(const Embedded& embedded) { return embedded.As<IPersistStreamInit>()->IsDirty() == S_OK; }

    TestBag bag;
    TestContainer container;
    Embedded saved{container};
    Embedded loaded{container};
};

TEST_F(Persistence, EmptyBagGivesTheDefaultsInOrder)
{
    Change(loaded.control);
    EXPECT_EQ(LoadBag(), S_OK);
    EXPECT_EQ(Loaded(), Defaults());
    EXPECT_EQ(bag.read, kNames);
}

TEST_F(Persistence, BagHoldsWhatDiffersFromTheDefaults)
{
    saved.InitNew();
    LoadBag();
    TestBag none;
    ASSERT_HRESULT_SUCCEEDED(loaded.As<IPersistPropertyBag>()->Save(&none, TRUE, FALSE));
    EXPECT_EQ(none.written, std::vector<std::string>{"RecursiveCheck"}) << "True is -1, the default is 1";

    Change(saved.control);
    ASSERT_HRESULT_SUCCEEDED(saved.As<IPersistPropertyBag>()->Save(&bag, TRUE, FALSE));
    std::vector<std::string> names = kNames;
    names.erase(names.begin());
    EXPECT_EQ(bag.written, names);
    EXPECT_EQ(LoadBag(), S_OK);
    EXPECT_EQ(Loaded(), Changed());
}

TEST_F(Persistence, BagThatWantsAllGetsEveryValueWithItsType)
{
    saved.InitNew();
    Change(saved.control);
    ASSERT_HRESULT_SUCCEEDED(saved.As<IPersistPropertyBag>()->Save(&bag, TRUE, TRUE));
    EXPECT_EQ(bag.written, kNames);
    const VARTYPE types[] = {VT_I2, VT_I2,      VT_I2, VT_BOOL, VT_BOOL, VT_UNKNOWN, VT_BOOL, VT_BOOL, VT_BOOL, VT_I2,
                             VT_I2, VT_UNKNOWN, VT_I2, VT_BSTR, VT_BSTR, VT_UNKNOWN, VT_BOOL, VT_I4,   VT_BOOL};
    for (std::size_t i = 0; i < kNames.size(); ++i) {
        EXPECT_EQ(V_VT(&bag.Entries().at(kNames[i])), types[i]) << kNames[i];
    }
}

TEST_F(Persistence, BagWithTextsAndNumbersOfOtherTypesIsConverted)
{
    bag.converts = false;
    bag.SetText("Appearance", L"0");
    bag.SetText("Checkboxes", L"True");
    bag.SetNumber("HotTracking", 1);
    bag.SetNumber("HideSelection", 0);
    bag.SetNumber("FileFilter", 12);
    bag.SetText("BackColor", L"2147483653");
    bag.SetText("RecursiveCheck", L"0");
    bag.SetNumber("DragDropEnable", 7);
    EXPECT_EQ(LoadBag(), S_OK);
    const std::string properties = Loaded();
    for (const char* line :
         {"Appearance=0\n", "Checkboxes=-1\n", "HotTracking=-1\n", "HideSelection=0\n", "FileFilter=12\n",
          "BackColor=-2147483643\n", "RecursiveCheck=0\n", "DragDropEnable=-1\n"}) {
        EXPECT_NE(properties.find(line), std::string::npos) << line;
    }
}

TEST_F(Persistence, JunkInABagGivesWayToTheDefaults)
{
    for (const bool converts : {true, false}) {
        for (const std::string& name : kNames) {
            if (name != "PathSeparator" && name != "FileFilter") bag.SetText(name, L"no such value");
        }
        bag.SetNumber("LabelEdit", 77);
        bag.SetNumber("LineStyle", -5);
        bag.SetNumber("MousePointer", 1000000);
        bag.converts = converts;
        EXPECT_EQ(LoadBag(), S_OK);
        EXPECT_EQ(Loaded(), Defaults()) << converts;
    }
    VARIANT object{};
    V_VT(&object) = VT_UNKNOWN;
    V_UNKNOWN(&object) = NewStream().Detach();
    bag.Set("Font", object);
    VARIANT null{};
    V_VT(&null) = VT_NULL;
    bag.Set("PathSeparator", null);
    EXPECT_EQ(LoadBag(), S_OK);
    EXPECT_EQ(Loaded(), Defaults());
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
        Change(saved.control);
        const ComPtr<IStream> stream = NewStream();
        saved.As<IPersistStreamInit>()->Save(stream.Get(), TRUE);
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
    HRESULT LoadBytes()
    {
        const ComPtr<IStream> stream = NewStream();
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
    std::string expected = Changed();
    const auto replace = [&](const std::string& text, const std::string& by) {
        expected.replace(expected.find(text), text.size(), by);
    };
    replace(TextOf(NewFont(L"Courier New", 15, true).Get()), TextOf(container.font.Get()));
    replace("MouseIcon=picture 3", "MouseIcon=none");
    replace("Picture=picture 3", "Picture=none");
    EXPECT_EQ(Loaded(), expected) << "what stands behind them is loaded";

    for (const char* const name : {"Font", "MouseIcon", "Picture"})
        bag.SetClass(name, kPlanted);
    EXPECT_EQ(LoadBag(), S_OK);
    EXPECT_EQ(Loaded(), Defaults());
    EXPECT_EQ(planted.created, 0);
    CoRevokeClassObject(cookie);
}

TEST_F(SavedObjects, ThatLieAboutTheirSizeAreRefused)
{
    const std::vector<char> whole = bytes;
    const std::size_t picture = Find(kPictureClass) + sizeof(CLSID) + 4;
    for (const DWORD size : {0xFFFFFFFFu, 0x7FFFFFFFu, 0x10000000u}) {
        bytes = whole;
        Put(picture, size);
        EXPECT_EQ(LoadBytes(), STG_E_DOCFILECORRUPT);
        EXPECT_EQ(Loaded(), Defaults());
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
    EXPECT_NE(Loaded().find("MouseIcon=none\nMousePointer=99\n"), std::string::npos) << Loaded();
    EXPECT_NE(Loaded().find("Picture=none\nDragDropEnable=-1\n"), std::string::npos);
}

TEST_F(SavedObjects, HoldNoFontBeyondTheLargestSize)
{
    Put(Find(kFontClass) + sizeof(CLSID) + 6, DWORD{268550000});
    EXPECT_EQ(LoadBytes(), S_OK);
    EXPECT_NE(Loaded().find(" 16380 bold\n"), std::string::npos) << Loaded();
    VARIANT font{};
    V_VT(&font) = VT_UNKNOWN;
    V_UNKNOWN(&font) = NewFont(L"Courier New", 26855, true).Detach();
    bag.Set("Font", font);
    EXPECT_EQ(LoadBag(), S_OK);
    EXPECT_NE(Loaded().find(" 16380 bold\n"), std::string::npos) << Loaded();
}

TEST_F(Persistence, RoundTripThroughAStreamStopsAtItsEnd)
{
    saved.InitNew();
    Change(saved.control);
    SIZEL extent{4000, 3000};
    saved.object->SetExtent(DVASPECT_CONTENT, &extent);
    const ComPtr<IStream> stream = NewStream();
    const auto persist = saved.As<IPersistStreamInit>();
    ASSERT_HRESULT_SUCCEEDED(persist->Save(stream.Get(), TRUE));
    LARGE_INTEGER none{};
    ULARGE_INTEGER end{};
    ULARGE_INTEGER most{};
    stream->Seek(none, STREAM_SEEK_CUR, &end);
    EXPECT_HRESULT_SUCCEEDED(persist->GetSizeMax(&most));
    EXPECT_EQ(most.QuadPart, end.QuadPart);
    ULONG written = 0;
    stream->Write("behind", 6, &written);

    EXPECT_EQ(LoadStream(stream), S_OK);
    EXPECT_EQ(Loaded(), Changed());
    char text[7] = {};
    stream->Read(text, 6, &written);
    EXPECT_STREQ(text, "behind");
    SIZEL read{};
    loaded.object->GetExtent(DVASPECT_CONTENT, &read);
    EXPECT_EQ(read.cx, 4000);
}

TEST_F(Persistence, RoundTripThroughAStorageCarriesTheClass)
{
    saved.InitNew();
    Change(saved.control);
    const ComPtr<IStorage> storage = NewStorage();
    ASSERT_HRESULT_SUCCEEDED(saved.As<IPersistStorage>()->Save(storage.Get(), FALSE));
    ASSERT_HRESULT_SUCCEEDED(saved.As<IPersistStorage>()->SaveCompleted(storage.Get()));
    EXPECT_FALSE(IsDirty(saved));
    CLSID classId{};
    ReadClassStg(storage.Get(), &classId);
    EXPECT_TRUE(classId == __uuidof(::Sylvex));
    EXPECT_EQ(loaded.As<IPersistStorage>()->Load(storage.Get()), S_OK);
    EXPECT_EQ(Loaded(), Changed());

    EXPECT_EQ(loaded.As<IPersistStorage>()->Load(NewStorage().Get()), STG_E_FILENOTFOUND);
    EXPECT_EQ(Loaded(), Defaults());
}

TEST_F(Persistence, StreamCutShortAnywhereFailsAndLeavesTheDefaults)
{
    saved.InitNew();
    Change(saved.control);
    const ComPtr<IStream> whole = NewStream();
    ASSERT_HRESULT_SUCCEEDED(saved.As<IPersistStreamInit>()->Save(whole.Get(), TRUE));
    STATSTG state{};
    whole->Stat(&state, STATFLAG_NONAME);
    for (DWORD length = 0; length < state.cbSize.LowPart; length += length < 200 ? 1 : 97) {
        const ComPtr<IStream> cut = NewStream();
        Rewind(whole);
        ULARGE_INTEGER bytes{};
        bytes.QuadPart = length;
        whole->CopyTo(cut.Get(), bytes, nullptr, nullptr);
        ASSERT_EQ(LoadStream(cut), STG_E_READFAULT) << length;
    }
    EXPECT_EQ(Loaded(), Defaults());
}

// Puts one byte of a saved stream to another value.
void Damage(const ComPtr<IStream>& stream, DWORD at, BYTE value)
{
    LARGE_INTEGER place{};
    place.QuadPart = at;
    stream->Seek(place, STREAM_SEEK_SET, nullptr);
    stream->Write(&value, 1, nullptr);
}

TEST_F(Persistence, StreamOfAnotherKindOrVersionFailsAndLeavesTheDefaults)
{
    const struct {
        DWORD at;
        BYTE value;
        HRESULT expected;
    } cases[] = {{0, 'X', STG_E_INVALIDHEADER}, {4, 2, STG_E_OLDDLL}, {5, 1, STG_E_OLDDLL}};
    for (const auto& [at, value, expected] : cases) {
        const ComPtr<IStream> stream = NewStream();
        saved.As<IPersistStreamInit>()->Save(stream.Get(), TRUE);
        Damage(stream, at, value);
        Change(loaded.control);
        EXPECT_EQ(LoadStream(stream), expected);
        EXPECT_EQ(Loaded(), Defaults());
    }
}

TEST_F(Persistence, DamagedStreamNeverBreaksTheControl)
{
    saved.InitNew();
    Change(saved.control);
    const ComPtr<IStream> whole = NewStream();
    saved.As<IPersistStreamInit>()->Save(whole.Get(), TRUE);
    for (DWORD at = 16; at < 200; ++at) {
        const ComPtr<IStream> damaged = NewStream();
        Rewind(whole);
        ULARGE_INTEGER all{};
        all.QuadPart = 1 << 20;
        whole->CopyTo(damaged.Get(), all, nullptr, nullptr);
        Damage(damaged, at, 0xFF);
        LoadStream(damaged);
        VARIANT_BOOL boxes = VARIANT_FALSE;
        ASSERT_HRESULT_SUCCEEDED(loaded.control->get_Checkboxes(&boxes)) << at;
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

    ComPtr<IFontDisp> font;
    saved.control->get_Font(font.Put());
    EXPECT_FALSE(IsDirty(saved));
    font.As<IFont>()->put_Bold(TRUE);
    EXPECT_TRUE(IsDirty(saved));
    TestBag written;
    saved.As<IPersistPropertyBag>()->Save(&written, TRUE, FALSE);
    EXPECT_FALSE(IsDirty(saved));

    Change(loaded.control);
    LoadBag();
    EXPECT_FALSE(IsDirty(loaded));
    EXPECT_HRESULT_SUCCEEDED(saved.control->Enumerate());
    EXPECT_FALSE(IsDirty(saved)) << "what is in the tree is not saved";
}

TEST_F(Persistence, LoadingSendsNoNotices)
{
    ComPtr<IConnectionPoint> point;
    loaded.As<IConnectionPointContainer>()->FindConnectionPoint(IID_IPropertyNotifySink, point.Put());
    DWORD cookie = 0;
    ASSERT_HRESULT_SUCCEEDED(point->Advise(static_cast<IPropertyNotifySink*>(&container), &cookie));
    Change(saved.control);
    const ComPtr<IStream> stream = NewStream();
    saved.As<IPersistStreamInit>()->Save(stream.Get(), TRUE);
    container.TakeLog();
    LoadBag();
    LoadStream(stream);
    EXPECT_EQ(container.TakeLog(), "");
    loaded.control->put_HotTracking(VARIANT_FALSE);
    EXPECT_EQ(container.TakeLog(), "OnChanged\n");
    point->Unadvise(cookie);
}

TEST_F(Persistence, FontOfTheContainerIsCopied)
{
    LoadBag();
    ComPtr<IFontDisp> font;
    loaded.control->get_Font(font.Put());
    font.As<IFont>()->put_Italic(TRUE);
    BOOL italic = TRUE;
    container.font.As<IFont>()->get_Italic(&italic);
    EXPECT_FALSE(italic);
    ASSERT_HRESULT_SUCCEEDED(loaded.As<IPersistPropertyBag>()->Save(&bag, TRUE, FALSE));
    EXPECT_EQ(bag.written, (std::vector<std::string>{"Font", "RecursiveCheck"}));
}

TEST_F(Persistence, AContainerThatSitesLastGivesItsFontToo)
{
    Embedded late(container);
    ASSERT_HRESULT_SUCCEEDED(late.As<IPersistPropertyBag>()->Load(&bag, nullptr));
    ASSERT_HRESULT_SUCCEEDED(late.SetSite());
    ASSERT_HRESULT_SUCCEEDED(late.As<IPersistPropertyBag>()->Save(&bag, TRUE, FALSE));
    EXPECT_EQ(bag.written, std::vector<std::string>{"RecursiveCheck"}) << "no font of its own";
}

TEST_F(Persistence, WindowNumberIsSavedFromDesignTime)
{
    container.SetAmbient(DISPID_AMBIENT_USERMODE, false);
    LoadBag();
    ASSERT_HRESULT_SUCCEEDED(loaded.control->put_hWnd(70000));
    ASSERT_HRESULT_SUCCEEDED(loaded.As<IPersistPropertyBag>()->Save(&bag, TRUE, FALSE));
    EXPECT_EQ(V_I4(&bag.Entries().at("hWnd")), 70000);
    TestBag second;
    ASSERT_HRESULT_SUCCEEDED(saved.As<IPersistPropertyBag>()->Load(&bag, nullptr));
    ASSERT_HRESULT_SUCCEEDED(saved.As<IPersistPropertyBag>()->Save(&second, TRUE, FALSE));
    EXPECT_EQ(V_I4(&second.Entries().at("hWnd")), 70000);
}

TEST_F(Persistence, ControlThatNobodyInitialisedIsSavedAsANewOne)
{
    const ComPtr<IStream> stream = NewStream();
    EXPECT_HRESULT_SUCCEEDED(saved.As<IPersistStreamInit>()->Save(stream.Get(), TRUE));
    EXPECT_EQ(LoadStream(stream), S_OK);
    EXPECT_NE(Loaded().find("RecursiveCheck=-1\n"), std::string::npos);
}

}  // namespace
}  // namespace sylvex::test
