#include "XmlTree.h"

#include <libxml/SAX2.h>
#include <libxml/parser.h>
#include <libxml/parserInternals.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

namespace tq4x::reader
{

std::optional<std::string_view> FindAttribute(const XmlElement& element, std::string_view name)
{
    for (const XmlAttribute& attribute : element.Attributes) {
        if (attribute.Name == name) {
            return attribute.Value;
        }
    }
    return std::nullopt;
}

const XmlElement* FindChild(const XmlElement& element, std::string_view name)
{
    const XmlElement* child = element.FirstChild;
    while (child != nullptr && child->Name != name) {
        child = child->Next;
    }
    return child;
}

const XmlElement* NextInOrder(const XmlElement& element, const XmlElement& root)
{
    if (element.FirstChild != nullptr) {
        return element.FirstChild;
    }
    const XmlElement* at = &element;
    while (at != &root && at->Next == nullptr) {
        at = at->Parent;
    }
    return at == &root ? nullptr : at->Next;
}

namespace
{

std::string_view ViewOf(const xmlChar* text)
{
    return text == nullptr ? std::string_view() : std::string_view(reinterpret_cast<const char*>(text));
}

std::string TrimmedMessage(const char* message)
{
    std::string text = message == nullptr ? "" : message;
    while (!text.empty() && (text.back() == '\n' || text.back() == ' ')) {
        text.pop_back();
    }
    return text;
}

/// The place behind a mark, from a place on; the end of the text if the mark is not there.
std::size_t Behind(std::string_view text, std::string_view mark, std::size_t from)
{
    const std::size_t at = text.find(mark, from);
    return at == std::string_view::npos ? text.size() : at + mark.size();
}

/// Counts the attributes of a tag and moves behind it. Of values nothing is looked at.
int PassTag(std::string_view text, std::size_t& at)
{
    int count = 0;
    while (at < text.size() && text[at] != '>') {
        const char sign = text[at++];
        count += sign == '=' ? 1 : 0;
        if (sign == '"' || sign == '\'') {
            at = Behind(text, std::string_view(&sign, 1), at);
        }
    }
    return count;
}

/// Where the first tag with too many attributes begins; the end of the text if there is none.
std::size_t FindCrowdedTag(std::string_view text)
{
    std::size_t at = text.find('<');
    while (at < text.size()) {
        const std::size_t start = at;
        const std::string_view rest = text.substr(at);
        if (rest.starts_with("<!--")) {
            at = Behind(text, "-->", at);
        } else if (rest.starts_with("<![CDATA[")) {
            at = Behind(text, "]]>", at);
        } else if (PassTag(text, at) > XmlTree::MostAttributes) {
            return start;
        }
        at = text.find('<', at);
    }
    return text.size();
}

long LineAt(std::string_view text, std::size_t place)
{
    return 1 + static_cast<long>(std::ranges::count(text.substr(0, place), '\n'));
}

bool IsBlank(std::string_view text)
{
    return text.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

} // namespace

/// Receives the parser's events and builds the tree.
class XmlTreeBuilder
{
public:
    XmlTreeBuilder(FindingList& findings, std::size_t mostItems)
        : m_findings(findings),
          m_mostItems(mostItems)
    {}

    std::optional<XmlTree> Parse(std::string_view text);

private:
    /// An element whose end has not come.
    struct OpenElement
    {
        XmlElement* Element = nullptr;
        std::string Text;
    };

    static XmlTreeBuilder& Self(void* context)
    {
        return *static_cast<XmlTreeBuilder*>(static_cast<xmlParserCtxtPtr>(context)->_private);
    }

    static xmlSAXHandler Handler();
    static void OnStart(void* context, const xmlChar* name, const xmlChar* prefix, const xmlChar* uri,
                        int namespaceCount, const xmlChar** namespaces, int count, int defaultedCount,
                        const xmlChar** attributes);
    static void OnEnd(void* context, const xmlChar* name, const xmlChar* prefix, const xmlChar* uri);
    static void OnText(void* context, const xmlChar* text, int size);
    static void OnDocumentType(void* context, const xmlChar* name, const xmlChar* id, const xmlChar* file);
    static void OnError(void* context, xmlErrorPtr error);

    void Start(std::string_view name, std::span<const XmlAttribute> attributes);
    void End();
    void Stop(std::string_view code, long line, std::string text);
    bool CountItems(std::size_t count);

    long Line() const { return xmlSAX2GetLineNumber(m_parser); }

    std::string_view Keep(std::string_view text);
    std::string_view KeepName(std::string_view prefix, std::string_view name);

    FindingList& m_findings;
    std::size_t m_mostItems;
    xmlParserCtxtPtr m_parser = nullptr;
    XmlTree m_tree;
    std::unordered_set<std::string_view> m_names;
    std::vector<OpenElement> m_open; ///< stays at its largest size, so that the buffers are used again
    std::size_t m_depth = 0;
    std::size_t m_itemCount = 0;
    bool m_isStopped = false;
};

xmlSAXHandler XmlTreeBuilder::Handler()
{
    xmlSAXHandler handler = {};
    handler.initialized = XML_SAX2_MAGIC;
    handler.startElementNs = OnStart;
    handler.endElementNs = OnEnd;
    handler.characters = OnText;
    handler.ignorableWhitespace = OnText;
    handler.cdataBlock = OnText;
    handler.internalSubset = OnDocumentType;
    handler.serror = OnError;
    return handler;
}

void XmlTreeBuilder::OnStart(void* context, const xmlChar* name, const xmlChar* prefix,
                             const xmlChar* /*uri*/, int namespaceCount, const xmlChar** namespaces,
                             int count, int /*defaultedCount*/, const xmlChar** attributes)
{
    XmlTreeBuilder& self = Self(context);
    if (self.m_isStopped || !self.CountItems(1 + static_cast<std::size_t>(count + namespaceCount))) {
        return;
    }
    std::vector<XmlAttribute> found;
    for (int i = 0; i < namespaceCount; ++i) {
        found.push_back({self.KeepName("", "xmlns"), self.Keep(ViewOf(namespaces[2 * i + 1]))});
    }
    for (int i = 0; i < count; ++i) {
        const xmlChar** const row = attributes + 5 * i;
        const std::string_view value(reinterpret_cast<const char*>(row[3]),
                                     static_cast<std::size_t>(row[4] - row[3]));
        found.push_back({self.KeepName(ViewOf(row[1]), ViewOf(row[0])), self.Keep(value)});
    }
    self.Start(self.KeepName(ViewOf(prefix), ViewOf(name)), found);
}

void XmlTreeBuilder::OnEnd(void* context, const xmlChar* /*name*/, const xmlChar* /*prefix*/,
                           const xmlChar* /*uri*/)
{
    if (!Self(context).m_isStopped) {
        Self(context).End();
    }
}

void XmlTreeBuilder::OnText(void* context, const xmlChar* text, int size)
{
    XmlTreeBuilder& self = Self(context);
    if (!self.m_isStopped && self.m_depth > 0) {
        self.m_open[self.m_depth - 1].Text.append(reinterpret_cast<const char*>(text),
                                                  static_cast<std::size_t>(size));
    }
}

void XmlTreeBuilder::OnDocumentType(void* context, const xmlChar* /*name*/, const xmlChar* /*id*/,
                                    const xmlChar* /*file*/)
{
    XmlTreeBuilder& self = Self(context);
    self.Stop("TQ-XML-DOCTYPE", self.Line(), "A document type is not allowed.");
}

void XmlTreeBuilder::OnError(void* context, xmlErrorPtr error)
{
    if (error->level == XML_ERR_WARNING) {
        return;
    }
    Self(context).Stop("TQ-XML-FORM", error->line,
                       "Not well-formed: " + TrimmedMessage(error->message) + ".");
}

void XmlTreeBuilder::Start(std::string_view name, std::span<const XmlAttribute> attributes)
{
    if (m_depth == XmlTree::MostDepth) {
        Stop("TQ-XML-DEPTH", Line(),
             "Elements stand more than " + std::to_string(XmlTree::MostDepth) + " deep.");
        return;
    }
    std::pmr::polymorphic_allocator<> allocator(m_tree.m_memory.get());
    XmlElement* const element = allocator.new_object<XmlElement>();
    XmlAttribute* const kept = allocator.allocate_object<XmlAttribute>(attributes.size());
    std::ranges::copy(attributes, kept);
    element->Name = name;
    element->Attributes = {kept, attributes.size()};
    element->Line = Line();
    if (m_depth == 0) {
        m_tree.m_root = element;
    } else {
        XmlElement* const parent = m_open[m_depth - 1].Element;
        element->Parent = parent;
        (parent->LastChild == nullptr ? parent->FirstChild
                                      : const_cast<XmlElement*>(parent->LastChild)->Next) = element;
        parent->LastChild = element;
    }
    ++m_depth;
    m_open.resize(std::max(m_open.size(), m_depth));
    m_open[m_depth - 1].Element = element;
    m_open[m_depth - 1].Text.clear();
}

void XmlTreeBuilder::End()
{
    const OpenElement& open = m_open[--m_depth];
    if (open.Element->FirstChild == nullptr || !IsBlank(open.Text)) {
        open.Element->Text = Keep(open.Text);
    }
}

void XmlTreeBuilder::Stop(std::string_view code, long line, std::string text)
{
    if (!m_isStopped) {
        m_isStopped = true;
        m_findings.Error(code, line, std::move(text));
        xmlStopParser(m_parser);
    }
}

bool XmlTreeBuilder::CountItems(std::size_t count)
{
    m_itemCount += count;
    if (m_itemCount > m_mostItems) {
        Stop("TQ-XML-SIZE", Line(),
             "There are more than " + std::to_string(m_mostItems) + " elements and attributes.");
    }
    return !m_isStopped;
}

std::string_view XmlTreeBuilder::Keep(std::string_view text)
{
    if (text.empty()) {
        return {};
    }
    char* const kept = static_cast<char*>(m_tree.m_memory->allocate(text.size(), 1));
    std::memcpy(kept, text.data(), text.size());
    return {kept, text.size()};
}

std::string_view XmlTreeBuilder::KeepName(std::string_view prefix, std::string_view name)
{
    const std::string whole =
        prefix.empty() ? std::string(name) : std::string(prefix) + ":" + std::string(name);
    const auto known = m_names.find(whole);
    return known != m_names.end() ? *known : *m_names.insert(Keep(whole)).first;
}

std::optional<XmlTree> XmlTreeBuilder::Parse(std::string_view text)
{
    m_parser = xmlCreateMemoryParserCtxt(text.data(), static_cast<int>(text.size()));
    if (m_parser == nullptr) {
        m_findings.Error("TQ-XML-FORM", 1, "Not well-formed: the file is empty.");
        return std::nullopt;
    }
    xmlSAXHandler handler = Handler();
    xmlSAXHandler* const own = std::exchange(m_parser->sax, &handler);
    m_parser->_private = this;
    // Entities are replaced in attributes too: the five of XML, for there are no others.
    // Without the huge option texts of more than ten million bytes are refused. What it guards against
    // otherwise needs entities, and there are none.
    xmlCtxtUseOptions(m_parser, XML_PARSE_NONET | XML_PARSE_NOENT | XML_PARSE_HUGE);
    xmlParseDocument(m_parser);
    const bool isWellFormed = m_parser->wellFormed != 0;
    m_parser->sax = own;
    xmlFreeParserCtxt(m_parser);
    if (m_isStopped) {
        return std::nullopt;
    }
    if (!isWellFormed || m_tree.m_root == nullptr) {
        m_findings.Error("TQ-XML-FORM", 0, "Not well-formed.");
        return std::nullopt;
    }
    return std::move(m_tree);
}

std::optional<XmlTree> XmlTree::Parse(std::string_view text, FindingList& findings, std::size_t mostItems)
{
    const std::size_t type = text.find("<!DOCTYPE");
    if (type != std::string_view::npos) {
        findings.Error("TQ-XML-DOCTYPE", LineAt(text, type), "A document type is not allowed.");
        return std::nullopt;
    }
    if (const std::size_t crowded = FindCrowdedTag(text); crowded < text.size()) {
        findings.Error("TQ-XML-SIZE", LineAt(text, crowded),
                       "An element has more than " + std::to_string(MostAttributes) + " attributes.");
        return std::nullopt;
    }
    return XmlTreeBuilder(findings, mostItems).Parse(text);
}

} // namespace tq4x::reader
