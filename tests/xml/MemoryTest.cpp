// Every allocation of every operation fails once.

#include <cstdlib>
#include <functional>
#include <new>

#include "XmlFixture.h"
#include "xml/ElementWriter.h"

namespace {

// Allocations left before one fails; negative for never.
thread_local int allocationsLeft = -1;

}  // namespace

// Inlined, these would show the compiler that a block of malloc is given to an operator delete.
[[gnu::noinline]] void* operator new(std::size_t size) {
    if (allocationsLeft >= 0 && allocationsLeft-- == 0) throw std::bad_alloc();
    if (void* place = std::malloc(size)) return place;
    throw std::bad_alloc();
}
[[gnu::noinline]] void operator delete(void* place) noexcept {
    std::free(place);
}
[[gnu::noinline]] void operator delete(void* place, std::size_t) noexcept {
    std::free(place);
}

namespace {

TEST(Memory, EndsOperationsWithItsOwnCodeAndNothingChanged) {
    QorXMLDocument document;
    CStringW source(
        u"<!DOCTYPE r [<!ENTITY e 'long enough to be on the heap'>]><r xmlns:p='a long namespace'>"
        u"<p:a k='and a value that is long enough'>&e; and more than that<b/></p:a>"
        u"<c>1<!--c--><b/></c></r>");
    QorXMLNode* root = load(document, source);
    const NodePtr a(root->SelectSingleNode(u"p:a"));
    const char* const longName = "a-name-that-is-long-enough";
    // Texts that are passed by value are short: their copy is the caller's.
    const char* const query = "//*[b | c][contains(concat(., 'long enough'), 'more than that')]";
    QorXMLDocument other;
    // More than the first block of a written element's memory holds.
    const std::u16string wide(3000, u'w');
    const std::function<void()> operations[] = {
        [&] { a->AddAttribute1(longName, longName); },
        [&] { NodePtr(document.CreateNode1(longName)); },
        [&] { NodePtr(root->CloneNode()); },
        [&] { root->GetXML(); },
        [&] { root->GetNodeValue(); },
        [&] { ListPtr(root->GetNodeList1(query)); },
        [&] { ListPtr(root->GetChildNodes()); },
        [&] { NodePtr(root->SelectSingleNode(u"//c/b")); },
        [&] { NodePtr(a->GetParentNode()); },
        [&] { NodePtr(root->AppendNode(u"p:b", &document)); },
        [&] { other.LoadFromXMLString(source); },
        [&] {
            const NodePtr rule(corvane::xml::ElementWriter::make(document, u"Rule", 1));
            corvane::xml::ElementWriter writer(*rule);
            writer.attribute(u"Name", wide);
            writer.child(u"Value", 1).text(wide);
        },
    };
    for (const auto& operation : operations) {
        const CStringW before = root->GetXML();
        int failures = 0;
        for (HResult code = corvane::kErrorOutOfMemory; code != 0; ++failures) {
            allocationsLeft = failures;
            code = codeOf(operation);
            allocationsLeft = -1;
            if (code != 0) {
                EXPECT_EQ(code, corvane::kErrorOutOfMemory);
                ASSERT_EQ(root->GetXML(), before);
            }
        }
        EXPECT_GT(failures, 1);
        ASSERT_NE(load(other, source), nullptr);
    }
}

}  // namespace
