#include "Schema.h"

#include <libxml/relaxng.h>
#include <libxml/tree.h>
#include <libxml/xmlIO.h>

#include <algorithm>
#include <array>
#include <memory>
#include <string>
#include <utility>

#include "EmbeddedSchemas.h"

namespace tq4x::reader
{
namespace
{

/// Grammars include each other by relative names; a scheme of our own leads the library to the embedded
/// texts.
constexpr std::string_view Scheme = "tq4x-schema:/";

const EmbeddedFile* FindEmbedded(const char* address)
{
    const std::string_view text = address;
    if (!text.starts_with(Scheme)) {
        return nullptr;
    }
    const std::string_view name = text.substr(text.rfind('/') + 1);
    const auto files = EmbeddedSchemas();
    const auto found =
        std::ranges::find_if(files, [name](const EmbeddedFile& file) { return file.Name == name; });
    return found == files.end() ? nullptr : &*found;
}

int MatchEmbedded(const char* address)
{
    return FindEmbedded(address) != nullptr ? 1 : 0;
}

void* OpenEmbedded(const char* address)
{
    const EmbeddedFile* const file = FindEmbedded(address);
    return file == nullptr ? nullptr : new std::string_view(file->Text);
}

int ReadEmbedded(void* context, char* buffer, int size)
{
    std::string_view& rest = *static_cast<std::string_view*>(context);
    const std::size_t count = std::min(rest.size(), static_cast<std::size_t>(size));
    rest.copy(buffer, count);
    rest.remove_prefix(count);
    return static_cast<int>(count);
}

int CloseEmbedded(void* context)
{
    delete static_cast<std::string_view*>(context);
    return 0;
}

struct FreeSchema
{
    void operator()(xmlRelaxNGPtr schema) const { xmlRelaxNGFree(schema); }
};

using SchemaPointer = std::unique_ptr<xmlRelaxNG, FreeSchema>;

SchemaPointer LoadSchema(FileKind kind)
{
    static const int registered =
        xmlRegisterInputCallbacks(MatchEmbedded, OpenEmbedded, ReadEmbedded, CloseEmbedded);
    if (registered < 0) {
        return nullptr;
    }
    const std::string address = std::string(Scheme) + std::string(ExtensionOf(kind)) + ".rng";
    const xmlRelaxNGParserCtxtPtr parser = xmlRelaxNGNewParserCtxt(address.c_str());
    SchemaPointer schema(xmlRelaxNGParse(parser));
    xmlRelaxNGFreeParserCtxt(parser);
    return schema;
}

/// Grammars are compiled when they are needed first, and kept.
xmlRelaxNGPtr SchemaOf(FileKind kind)
{
    static std::array<SchemaPointer, FileKindCount> schemas;
    SchemaPointer& schema = schemas[static_cast<std::size_t>(kind)];
    if (schema == nullptr) {
        schema = LoadSchema(kind);
    }
    return schema.get();
}

struct FreeDocument
{
    void operator()(xmlDocPtr document) const { xmlFreeDoc(document); }
};

const xmlChar* Chars(const std::string& text)
{
    return reinterpret_cast<const xmlChar*>(text.c_str());
}

/// What the grammar sees of an element's text.
std::string_view VisibleText(const XmlElement& element)
{
    constexpr std::size_t MostShown = 256; // a multiple of four: Base64 stays whole
    if (element.Text.size() <= MostShown) {
        return element.Text;
    }
    if (element.Name.ends_with("ImageQtr")) {
        const std::size_t start = std::min(element.Text.find_first_not_of(" \t\r\n"), element.Text.size());
        return element.Text.substr(0, start + MostShown);
    }
    if (element.Name.ends_with("StreamQtr")) {
        const std::size_t end = element.Text.find_last_of(" \t\r\n", MostShown);
        return element.Text.substr(0, end == std::string_view::npos ? MostShown : end);
    }
    return element.Text;
}

xmlNodePtr MakeNode(xmlDocPtr document, const XmlElement& element)
{
    const xmlNodePtr node = xmlNewDocNode(document, nullptr, Chars(std::string(element.Name)), nullptr);
    node->_private = const_cast<XmlElement*>(&element);
    for (const XmlAttribute& attribute : element.Attributes) {
        xmlNewProp(node, Chars(std::string(attribute.Name)), Chars(std::string(attribute.Value)));
    }
    const std::string_view text = VisibleText(element);
    if (!text.empty()) {
        xmlAddChild(node, xmlNewDocTextLen(document, reinterpret_cast<const xmlChar*>(text.data()),
                                           static_cast<int>(text.size())));
    }
    return node;
}

/// The next element that the grammar shall see: of a list of keys the first ones only.
class VisibleWalk
{
public:
    explicit VisibleWalk(const XmlElement& root) : m_root(root), m_at(&root) {}

    const XmlElement* Current() const { return m_at; }

    void Advance()
    {
        constexpr int MostKeys = 64;
        const bool isKey =
            m_at->Parent != nullptr && m_at->Parent->Name == "Keys" && m_at->FirstChild == nullptr;
        m_keys = isKey ? m_keys + 1 : 0;
        if (m_keys == MostKeys) {
            m_at = m_at->Parent->LastChild;
        }
        m_at = NextInOrder(*m_at, m_root);
    }

private:
    const XmlElement& m_root;
    const XmlElement* m_at;
    int m_keys = 0;
};

/// Nothing if there is too much for the grammar.
std::unique_ptr<xmlDoc, FreeDocument> BuildDocument(const XmlElement& root, std::size_t mostItems)
{
    std::size_t items = 0;
    std::unique_ptr<xmlDoc, FreeDocument> document(xmlNewDoc(reinterpret_cast<const xmlChar*>("1.0")));
    xmlNodePtr parent = nullptr;
    for (VisibleWalk walk(root); walk.Current() != nullptr; walk.Advance()) {
        const XmlElement& element = *walk.Current();
        items += 1 + element.Attributes.size();
        if (items > mostItems) {
            return nullptr;
        }
        while (parent != nullptr && parent->_private != element.Parent) {
            parent = parent->parent;
        }
        const xmlNodePtr node = MakeNode(document.get(), element);
        if (parent == nullptr) {
            xmlDocSetRootElement(document.get(), node);
        } else {
            xmlAddChild(parent, node);
        }
        parent = node;
    }
    return document;
}

const XmlElement* ElementOf(const void* errorNode)
{
    const xmlNode* node = static_cast<const xmlNode*>(errorNode);
    while (node != nullptr && (node->type != XML_ELEMENT_NODE || node->_private == nullptr)) {
        node = node->parent;
    }
    return node == nullptr ? nullptr : static_cast<const XmlElement*>(node->_private);
}

std::string Cut(std::string text)
{
    constexpr std::size_t MostShown = 300;
    return text.size() > MostShown ? text.substr(0, MostShown) + "..." : text;
}

/// The attributes of an element as they stand.
std::string AttributeText(const XmlElement& element)
{
    std::string text;
    for (const XmlAttribute& attribute : element.Attributes) {
        text += " " + std::string(attribute.Name) + "=\"" + std::string(attribute.Value) + "\"";
    }
    return Cut(text);
}

/// What the library says, and the element that it is about.
struct SchemaMessage
{
    std::string Text;
    const XmlElement* Element = nullptr;
};

/// Of wrong attributes the library tells the element's name, but may point at its first child.
SchemaMessage ExplainAttributes(SchemaMessage message)
{
    constexpr std::string_view Before = "Element ";
    constexpr std::string_view Behind = " failed to validate attributes";
    if (!message.Text.starts_with(Before) || !message.Text.ends_with(Behind)) {
        return message;
    }
    const std::string_view name =
        std::string_view(message.Text)
            .substr(Before.size(), message.Text.size() - Before.size() - Behind.size());
    while (message.Element != nullptr && message.Element->Name != name) {
        message.Element = message.Element->Parent;
    }
    if (message.Element != nullptr) {
        message.Text += ":" + AttributeText(*message.Element);
    }
    return message;
}

SchemaMessage ExplainText(SchemaMessage message)
{
    if (message.Text.starts_with("Error validating") && message.Element != nullptr) {
        message.Text += ": \"" + Cut(std::string(message.Element->Text)) + "\"";
    }
    return message;
}

/// The library tells a failure once more for each list and element around it; the first one of a line is the
/// innermost and says it. Malformed numbers, keys and images were told by their readers, more exactly.
void OnSchemaError(void* context, xmlErrorPtr error)
{
    FindingList& findings = *static_cast<FindingList*>(context);
    SchemaMessage message{error->message == nullptr ? "" : error->message, ElementOf(error->node)};
    while (message.Text.ends_with('\n')) {
        message.Text.pop_back();
    }
    message = ExplainText(ExplainAttributes(std::move(message)));
    const long line = message.Element == nullptr ? 0 : message.Element->Line;
    const bool isEcho = message.Text.ends_with("failed to validate content") && findings.HasErrors();
    if (!isEcho && !findings.HasAt(line)) {
        findings.Error("TQ-SCHEMA", line, message.Text + ".");
    }
}

} // namespace

void CheckSchema(FileKind kind, const XmlTree& tree, FindingList& findings, std::size_t mostItems)
{
    const xmlRelaxNGPtr schema = SchemaOf(kind);
    const auto document = BuildDocument(tree.Root(), mostItems);
    if (document == nullptr) {
        findings.Error("TQ-XML-SIZE", 0,
                       "Without keys there are more than " + std::to_string(mostItems) +
                           " elements and attributes.");
        return;
    }
    const xmlRelaxNGValidCtxtPtr validator = xmlRelaxNGNewValidCtxt(schema);
    xmlRelaxNGSetValidStructuredErrors(validator, OnSchemaError, &findings);
    const int result = schema == nullptr ? -1 : xmlRelaxNGValidateDoc(validator, document.get());
    xmlRelaxNGFreeValidCtxt(validator);
    if (result != 0 && !findings.HasErrors()) {
        findings.Error("TQ-SCHEMA", 0, "The file does not follow the grammar of its kind.");
    }
}

} // namespace tq4x::reader
