#pragma once

#include <memory>

#include "component/container/ole_inplace.h"
#include "component/container/ole_object.h"
#include "component/container/ole_view.h"
#include "component/container/persistence.h"
#include "component/container/property_pages.h"

namespace sylvex {

/// What a container needs of the control: embedding, in-place activation, drawing, saving. A part of the control's
/// object: implements its interfaces and finds them itself, and works on Core().
class OleParts : public OleObjectPart,
                 public OleControlPart,
                 public InPlacePart,
                 public ViewPart,
                 public PersistencePart,
                 public PropertyPagesPart {
public:
    /// The interface with this identifier, without a reference added; null when it is none of these.
    void* Find(const IID& id)
    {
        return FindInParts<OleObjectPart, OleControlPart, InPlacePart, ViewPart, PersistencePart, PropertyPagesPart>(
            this, id);
    }

protected:
    // One answer for all the parts.
    ControlCore& Core() override = 0;

private:
    Embedding& Embedded() override
    {
        if (!m_embedding) m_embedding = std::make_unique<Embedding>(Core(), *this);
        return *m_embedding;
    }

    std::unique_ptr<Embedding> m_embedding;
};

}  // namespace sylvex
