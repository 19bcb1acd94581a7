#include "XmlTree.h"

#include "Schema.h"
#include "reader/ReaderDocuments.h"

namespace tq4x::reader
{
namespace
{

std::vector<std::string> FindingsOf(const std::string& text)
{
    FindingList findings("file");
    EXPECT_FALSE(XmlTree::Parse(text, findings)) << text.substr(0, 100);
    return test::ToTexts(findings.Take());
}

using Texts = std::vector<std::string>;

TEST(XmlTree, KeepsElementsAttributesTextAndLines)
{
    FindingList findings("file");
    const auto tree = XmlTree::Parse(
        "<a>\n\t<b x=\"1 &amp; 2\" y=\"\"/>\n\t<c>one &lt; &#50;</c>\n<!-- no text -->\n</a>", findings);
    ASSERT_TRUE(tree);
    const XmlElement& root = tree->Root();
    EXPECT_EQ(root.Name, "a");
    EXPECT_EQ(root.Text, "");
    const XmlElement* const b = FindChild(root, "b");
    ASSERT_NE(b, nullptr);
    EXPECT_EQ(b->Line, 2);
    EXPECT_EQ(FindAttribute(*b, "x"), "1 & 2");
    EXPECT_EQ(FindAttribute(*b, "y"), "");
    EXPECT_EQ(FindAttribute(*b, "z"), std::nullopt);
    const XmlElement* const c = FindChild(root, "c");
    ASSERT_NE(c, nullptr);
    EXPECT_EQ(c->Text, "one < 2");
    EXPECT_EQ(c->Parent, &root);
    EXPECT_EQ(FindChild(root, "d"), nullptr);
    EXPECT_EQ(NextInOrder(root, root), b);
    EXPECT_EQ(NextInOrder(*b, root), c);
    EXPECT_EQ(NextInOrder(*c, root), nullptr);
}

TEST(XmlTree, TextBetweenChildrenIsKeptSoThatTheGrammarSeesIt)
{
    FindingList findings("file");
    const auto tree = XmlTree::Parse("<a><b/>words<b/></a>", findings);
    ASSERT_TRUE(tree);
    EXPECT_EQ(tree->Root().Text, "words");
}

TEST(XmlTree, DocumentTypesAreRefusedBeforeAnythingElse)
{
    const std::string bomb =
        "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<!DOCTYPE a [\n"
        "<!ENTITY b \"bbbbbbbbbb\"><!ENTITY c \"&b;&b;&b;&b;&b;&b;&b;&b;\">]>\n<a>&c;</a>";
    EXPECT_EQ(FindingsOf(bomb), Texts{"2 error TQ-XML-DOCTYPE A document type is not allowed."});
    EXPECT_EQ(FindingsOf("<!DOCTYPE a SYSTEM \"/etc/passwd\"><a/>"),
              Texts{"1 error TQ-XML-DOCTYPE A document type is not allowed."});
}

TEST(XmlTree, DocumentTypesInAnotherEncodingAreRefusedToo)
{
    std::string wide = "\xFF\xFE";
    for (const char character : std::string("<!DOCTYPE a [<!ENTITY b \"c\">]><a>&b;</a>")) {
        wide += character;
        wide += '\0';
    }
    EXPECT_EQ(FindingsOf(wide), Texts{"1 error TQ-XML-DOCTYPE A document type is not allowed."});
}

TEST(XmlTree, UnknownEntitiesAreNotWellFormed)
{
    EXPECT_EQ(FindingsOf("<a>\n&other;</a>"),
              Texts{"2 error TQ-XML-FORM Not well-formed: Entity 'other' not defined."});
}

TEST(XmlTree, MalformedTextsGiveOneFindingWithItsLine)
{
    struct Case
    {
        const char* Name;
        std::string Text;
        long Line;
    };

    const Case cases[] = {
        {"empty", "", 1},
        {"blank", "\n\n", 3},
        {"no XML", "hello", 1},
        {"cut in a tag", "<a>\n<b x=\"1", 2},
        {"cut before the end", "<a>\n<b/>\n", 3},
        {"wrong end", "<a>\n<b></c></a>", 2},
        {"unescaped ampersand", "<a>\n<b x=\"salt & pepper\"/></a>", 2},
        {"unescaped less", "<a>\n<b x=\"1 < 2\"/></a>", 2},
        {"quote in an attribute", "<a>\n<b x=\"say \"no\"\"/></a>", 2},
        {"attribute twice", "<a x=\"1\" x=\"2\"/>", 1},
        {"two roots", "<a/>\n<b/>", 2},
        {"bad UTF-8", "<a>\n\xC3\x28</a>", 2},
        {"control character", "<a>\n\x01</a>", 2},
        {"zero byte", std::string("<a>\n\0</a>", 9), 2},
    };
    for (const Case& test : cases) {
        const Texts findings = FindingsOf(test.Text);
        ASSERT_EQ(findings.size(), 1U) << test.Name;
        EXPECT_TRUE(
            findings[0].starts_with(std::to_string(test.Line) + " error TQ-XML-FORM Not well-formed: "))
            << test.Name << ": " << findings[0];
    }
}

TEST(XmlTree, DepthIsLimited)
{
    std::string deep;
    for (int i = 0; i < 100000; ++i) {
        deep += "<a>";
    }
    EXPECT_EQ(FindingsOf(deep), Texts{"1 error TQ-XML-DEPTH Elements stand more than 32 deep."});
}

TEST(XmlTree, TheNumberOfElementsAndAttributesIsLimited)
{
    FindingList findings("file");
    EXPECT_TRUE(XmlTree::Parse("<a x=\"1\">\n<b/><b/></a>", findings, 4));
    EXPECT_FALSE(XmlTree::Parse("<a x=\"1\">\n<b/><b/></a>", findings, 3));
    EXPECT_EQ(test::ToTexts(findings.Take()),
              Texts{"2 error TQ-XML-SIZE There are more than 3 elements and attributes."});
}

std::string WithAttributes(int count)
{
    std::string text = "<root>\n<a";
    for (int i = 0; i < count; ++i) {
        text += " a" + std::to_string(i) + "='b=\"c\">'";
    }
    return text + "/></root>";
}

/// A file of a few megabytes must not keep the library busy for minutes.
TEST(XmlTree, TheAttributesOfAnElementAreLimited)
{
    const struct
    {
        const char* Name;
        std::string Text;
        std::vector<std::string> Findings;
    } cases[] = {
        {"most", WithAttributes(64), {}},
        {"too many", WithAttributes(65), {"2 error TQ-XML-SIZE An element has more than 64 attributes."}},
        {"hostile", WithAttributes(500000), {"2 error TQ-XML-SIZE An element has more than 64 attributes."}},
        {"in a comment", "<root><!-- don't: " + std::string(100, '=') + " --></root>", {}},
        {"in a text", "<root>" + std::string(100, '=') + "</root>", {}},
        {"in raw text", "<root><![CDATA[<a " + std::string(100, '=') + ">]]></root>", {}},
    };

    for (const auto& [name, text, expected] : cases) {
        FindingList findings("file");
        const std::optional<XmlTree> tree = XmlTree::Parse(text, findings);
        EXPECT_EQ(tree.has_value(), expected.empty()) << name;
        EXPECT_EQ(test::ToTexts(findings.Take()), expected) << name;
    }
}

TEST(XmlTree, TheGrammarLooksAtALimitedNumberOfThem)
{
    FindingList findings("file");
    const auto tree = XmlTree::Parse(test::DocumentText("house.qskla"), findings);
    ASSERT_TRUE(tree);
    CheckSchema(FileKind::SkeletalAnimation, *tree, findings);
    EXPECT_EQ(test::ToTexts(findings.Take()), Texts());
    CheckSchema(FileKind::SkeletalAnimation, *tree, findings, 20);
    EXPECT_EQ(test::ToTexts(findings.Take()),
              Texts{"0 error TQ-XML-SIZE Without keys there are more than 20 elements and attributes."});
}

TEST(XmlTree, LinesAboveTheLimitOfTheLibraryAreRight)
{
    FindingList findings("file");
    const std::string text =
        "<a>" + std::string(70000, '\n') + "<b/>" + std::string(70000, '\n') + "<c/></a>";
    const auto tree = XmlTree::Parse(text, findings);
    ASSERT_TRUE(tree);
    EXPECT_EQ(FindChild(tree->Root(), "b")->Line, 70001);
    EXPECT_EQ(FindChild(tree->Root(), "c")->Line, 140001);
}

TEST(XmlTree, LongTextsAndAttributesAreRead)
{
    FindingList findings("file");
    const std::string text(20'000'000, 'x');
    const auto tree = XmlTree::Parse("<a y=\"" + text + "\">" + text + "</a>", findings);
    ASSERT_TRUE(tree);
    EXPECT_EQ(tree->Root().Text.size(), text.size());
    EXPECT_EQ(FindAttribute(tree->Root(), "y")->size(), text.size());
}

} // namespace
} // namespace tq4x::reader
