#include "host/check/VendorElements.h"

#include <algorithm>

namespace
{
// The next element in document order below the top; null at the end.
const XmlElement* NextElement(const XmlElement* pElement, const XmlElement& top)
{
    if (pElement->pFirstChild)
        return pElement->pFirstChild;
    while (pElement != &top && !pElement->pNext)
        pElement = pElement->pParent;
    return pElement == &top ? nullptr : pElement->pNext;
}

// Compares the names from the last one upwards; none of them may lie above the top.
bool EndsChain(const XmlElement* pElement, ElementPath path, const XmlElement& top)
{
    for (auto name = std::rbegin(path); name != std::rend(path); ++name)
    {
        if (!pElement || pElement->Name() != *name)
            return false;
        pElement = pElement == &top ? nullptr : pElement->pParent;
    }
    return true;
}

// Of two elements on the way the second one counts where the first leads nowhere.
const XmlElement* FindAlong(const XmlElement* pParent, const CWideView* pName, const CWideView* pEnd)
{
    if (pName == pEnd)
        return pParent;
    for (const XmlElement* pChild = pParent ? pParent->pFirstChild : nullptr; pChild; pChild = pChild->pNext)
        if (pChild->Name() == *pName)
            if (const XmlElement* pFound = FindAlong(pChild, pName + 1, pEnd))
                return pFound;
    return nullptr;
}
} // namespace

const XmlElement* FindBelow(const XmlElement* pParent, ElementPath path)
{
    return FindAlong(pParent, path.begin(), path.end());
}

const XmlElement* CVendorElements::Anywhere(ElementPath path)
{
    const XmlElement* pElement = &m_root;
    while (pElement && !EndsChain(pElement, path, m_root))
        pElement = NextElement(pElement, m_root);
    return Used(pElement);
}

const XmlElement* CVendorElements::Below(const XmlElement* pParent, ElementPath path)
{
    return Used(FindBelow(pParent, path));
}

bool CVendorElements::IsUsed(const XmlElement& element) const
{
    return std::find(m_used.begin(), m_used.end(), &element) != m_used.end();
}

const XmlElement* CVendorElements::Used(const XmlElement* pElement)
{
    for (const XmlElement* pOuter = pElement; pOuter && pOuter != m_root.pParent; pOuter = pOuter->pParent)
        m_used.push_back(pOuter);
    return pElement;
}
