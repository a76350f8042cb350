#pragma once

#include <exception>
#include <utility>

#include "platform/value_text.h"
#include "widgets/node.h"

namespace sylvex {

/// A node as a host hands it to the control, or why what it handed over is none of the tree's: that is raised where
/// the node is first asked for, so that it counts as a failure of the procedure that was called.
class GivenNode {
public:
    /// Null: nothing.
    GivenNode(Node* node) : m_node(node) {}
    explicit GivenNode(std::exception_ptr refusal)
        : m_refusal(std::move(refusal)) {}  // NOLINT(bugprone-throw-keyword-missing)

    bool IsRefused() const { return m_refusal != nullptr; }
    /// Null for nothing; raises the refusal, or 35605 when the node has been removed since.
    Node* Get() const
    {
        if (m_refusal) std::rethrow_exception(m_refusal);
        return m_node.Get();
    }
    void ReportTo(ValueText& report) const { m_refusal ? report.Marker(Node::kReportName) : m_node.ReportTo(report); }

private:
    NodeRef m_node;
    std::exception_ptr m_refusal;
};

}  // namespace sylvex
