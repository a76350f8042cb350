#include "tests/support/scene.h"

#include "platform/text.h"

namespace sylvex {

Scene::Scene() : m_desk(MakeDesk())
{
    m_control = std::make_unique<Sylvex>(m_desk->Get(), *this, *this, m_desk->NewWindow());
    m_control->UserControl_InitProperties();
    m_control->UserControl_Resize({300, 400});
    InTreeSetParent() = false;
}

Scene::~Scene()
{
    m_control.reset();
}

void Scene::BindList()
{
    const WindowHandle window = m_desk->NewList();
    m_list = m_desk->Get().windows.WrapList(window);
    m_control->SetReqListView(std::make_shared<WindowListView>(m_desk->Get().windows.WrapList(window)));
    Heard();
}

void Scene::Enumerate()
{
    m_control->LetSetting(TreeSetting::Checkboxes, 1);
    m_control->Enumerate();
    Heard();
}

Node& Scene::OpenBase()
{
    const auto parts = SplitText(m_desk->Base(), L'\\');
    Node* node = &nodes().Item(parts[0] + L"\\");
    for (std::size_t i = 1; i < parts.size(); ++i)
        node = &ChildOf(*node, parts[i]);
    node->SetExpanded(true);
    return *node;
}

Node& Scene::At(const std::wstring& path)
{
    Node* node = &OpenBase();
    for (const std::wstring& part : SplitText(path, L'/'))
        node = &ChildOf(*node, part);
    return *node;
}

Node& Scene::ChildOf(Node& node, const std::wstring& text)
{
    node.SetExpanded(true);
    Node* child = node.Child();
    while (child != nullptr && child->Text() != text)
        child = child->Next();
    if (child == nullptr) throw ElementNotFound();
    return *child;
}

void Scene::Tick(Node& node, bool checked)
{
    node.SetChecked(checked);
    m_control->CheckNodeSelective(&node);
}

std::wstring Scene::Render(Node& node)
{
    std::wstring text = node.Text().empty() ? L"..." : node.Text();
    if (node.Children() > 0) text += node.Expanded() ? L"[-]" : L"[+]";
    if (node.Checked()) text += L"x";
    if (node.Bold()) text += L"~";
    if (!node.Expanded()) return text;
    text += L"(";
    for (Node* child = node.Child(); child != nullptr; child = child->Next())
        text += Render(*child) + (child->Next() != nullptr ? L" " : L"");
    return text + L")";
}

std::wstring Scene::RowTexts()
{
    std::wstring texts;
    for (int row = 0; row < m_list->RowCount(); ++row) {
        std::wstring text = m_list->Cell(row, 0);
        if (text.starts_with(m_desk->Base())) text = text.substr(m_desk->Base().size() + 1);
        texts += (row > 0 ? L" " : L"") + text;
    }
    return texts;
}

std::wstring Scene::Cell(int row, const std::wstring& key)
{
    return m_list->Cell(row, m_control->ReqListView()->SubItemIndex(key));
}

std::wstring Scene::Heard()
{
    return std::exchange(m_heard, {});
}

void Scene::Hear(const std::wstring& event, Node* node)
{
    m_heard += (m_heard.empty() ? L"" : L" ") + event + (node != nullptr ? node->Text() : L"");
    if (onEvent) onEvent(event, node);
}

}  // namespace sylvex
