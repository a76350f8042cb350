#include <gtest/gtest.h>

#include "diagnostics/trap.h"
#include "tests/simulated/simulated_desktop.h"

namespace sylvex {
namespace {

class Fixture : public Module {
public:
    SimulatedDesktop desktop;
    const wchar_t* Name() const override { return L"Fixture"; }
    void DumpVariables(Dump& dump) const override { dump.Add("m_State", 7); }
    Reporter& ReportTo() const override { return const_cast<SimulatedDesktop&>(desktop).Get().reporter; }
    MessageBoxes& Boxes() const override { return const_cast<SimulatedDesktop&>(desktop).Get().boxes; }

    void Outer(int depth)
    {
        std::wstring sPath = L"none";
        Trapped(*this, L"Outer", VARIABLES(depth), VARIABLES(sPath), [&](int& line) {
            line = 1;
            sPath = L"C:\\x";
            line = 2;
            Inner();
        });
    }
    void Inner()
    {
        Trapped(*this, L"Inner", kNone, kNone, [&](int& line) {
            line = 5;
            throw RuntimeError{35600, L"Index out of bounds"};
        });
    }
};

TEST(TrapTest, OneReportForEachActiveProcedureInnermostFirst)
{
    Fixture fixture;
    fixture.desktop.reporter.Install(L"");
    try {
        fixture.Outer(3);
        FAIL();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.number, 65535);
    }
    const auto& reports = fixture.desktop.reporter.Reports();
    ASSERT_EQ(reports.size(), 2u);
    EXPECT_EQ(reports[0].procedure, L"Inner");
    EXPECT_EQ(reports[0].number, 35600);
    EXPECT_EQ(reports[0].line, 5);
    EXPECT_EQ(reports[1].procedure, L"Outer");
    EXPECT_EQ(reports[1].number, 65535);
    EXPECT_EQ(reports[1].line, 2);
    const std::wstring& text = reports[1].variables;
    EXPECT_TRUE(
        text.starts_with(L"<Variables>\r\n<LocalVariables>\r\n<sPath>C:\\x</sPath></LocalVariables>\r\n"
                         L"<ModuleVariables>\r\n<m_State>7</m_State></ModuleVariables>\r\n<GlobalVariables>\r\n"))
        << std::string(text.begin(), text.end());
    EXPECT_TRUE(text.ends_with(L"</GlobalVariables>\r\n</Variables>\r\n<Parameters>\r\n<depth>3</depth></Parameters>"));
    EXPECT_NE(reports[0].variables.find(L"<Parameters>\r\n{None}</Parameters>"), std::wstring::npos);
}

TEST(TrapTest, WithoutAReporterEachLevelShowsItsBox)
{
    Fixture fixture;
    EXPECT_THROW(fixture.Outer(1), RuntimeError);
    const auto& boxes = fixture.desktop.boxes.Lines();
    ASSERT_EQ(boxes.size(), 2u);
    EXPECT_NE(boxes[0].find("Procedure: Inner\\r\\nLine Number: 5\\r\\n\\r\\nIndex out of bounds (35600)"),
              std::string::npos)
        << boxes[0];
    EXPECT_NE(boxes[1].find("Procedure: Outer\\r\\nLine Number: 2"), std::string::npos);
    EXPECT_NE(boxes[1].find("(65535)"), std::string::npos);
    EXPECT_TRUE(boxes[0].starts_with("[Application Error]"));
}

TEST(TrapTest, ForeignExceptionsBecomeTheNearestNumber)
{
    Fixture fixture;
    fixture.desktop.reporter.Install(L"");
    EXPECT_THROW(Trapped(fixture, L"P", kNone, kNone, [](int&) { throw std::bad_alloc(); }), RuntimeError);
    EXPECT_THROW(Trapped(fixture, L"P", kNone, kNone, [](int&) { std::wstring().at(1); }), RuntimeError);
    EXPECT_EQ(fixture.desktop.reporter.Reports()[0].number, 7);
    EXPECT_EQ(fixture.desktop.reporter.Reports()[1].number, 9);
}

}  // namespace
}  // namespace sylvex
