// The readers of catalogue, MDIB and XLIFF documents when memory runs out in
// the middle of a document: each allocation of a read fails in turn, and every
// read ends in std::bad_alloc or gives what it gives with memory to spare.
// Replacing operator new here reaches the library where it shares the
// program's operator new, as a shared library on Linux does.
#include <Zalt/Catalogue/ReadCatalogue.h>
#include <Zalt/Catalogue/ReadMdibTexts.h>
#include <Zalt/Catalogue/ReadXliff.h>
#include <Zalt/Catalogue/WriteCatalogue.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdlib>
#include <new>
#include <string>

namespace {

// While armed, every allocation is counted and the one numbered `failing` fails.
bool armed = false;
std::size_t counted = 0;
std::size_t failing = 0;

}  // namespace

void* operator new(std::size_t size) {
  if (armed && ++counted == failing) {
    throw std::bad_alloc();
  }
  if (void* block = std::malloc(size > 0 ? size : 1)) {
    return block;
  }
  throw std::bad_alloc();
}

void operator delete(void* block) noexcept { std::free(block); }
void operator delete(void* block, std::size_t /*size*/) noexcept { std::free(block); }

namespace {

using namespace Zalt::Catalogue;

std::string place(const SourceLocation& location) {
  return location.file + ':' + std::to_string(location.line) + ':' + std::to_string(location.column) + ' ';
}

std::string described(const Catalogue& catalogue) {
  std::string text = writeCatalogue(mdibTexts(catalogue.texts));
  for (const CatalogueText& entry : catalogue.texts) {
    text += place(catalogue.location(entry));
  }
  for (const MisplacedElement& element : catalogue.misplaced) {
    text += place(element.location) + element.name + ' ' + element.xmlNamespace + '\n';
  }
  return text;
}

std::string described(const std::vector<Finding>& findings) {
  std::string text;
  for (const Finding& finding : findings) {
    text += placed(finding) + '\n';
  }
  return text;
}

std::string described(const XliffImport& import) {
  return described(import.catalogue) + described(import.findings);
}

std::string described(const MdibTexts& texts) {
  std::string text;
  for (const MdibTextUse& use : texts.uses) {
    text += place(texts.location(use)) + (use.isInline ? "inline " : "") + use.ref + ' ' +
            std::to_string(use.version.value_or(0)) + ' ' + use.lang.value_or("-") + ' ' + use.element + ' ' +
            use.text + '\n';
  }
  return text;
}

// What `read` gives with the allocation numbered `failAt` failing (0 for
// none): its result or its problems, described, or "std::bad_alloc".
template <typename Read>
std::string outcome(const Read& read, std::size_t failAt) {
  counted = 0;
  failing = failAt;
  armed = true;
  try {
    const auto result = read();
    armed = false;
    return described(result);
  } catch (const CatalogueError& error) {
    armed = false;
    return "problems:\n" + described(error.problems());
  } catch (const std::bad_alloc&) {
    armed = false;
    return "std::bad_alloc";
  }
}

template <typename Read>
void failEachAllocationOf(const Read& read) {
  const std::string expected = outcome(read, 0);
  if (counted == 0) {
    GTEST_SKIP() << "the library allocates with an operator new of its own (a Windows DLL does), "
                    "which this test does not replace";
  }
  // The run that no longer reaches the failing allocation ends the test.
  std::size_t failAt = 1;
  for (bool reached = true; reached; ++failAt) {
    const std::string got = outcome(read, failAt);
    reached = counted == failAt;
    if (got != "std::bad_alloc" || !reached) {
      ASSERT_EQ(got, expected) << "with allocation " << failAt << " failing";
    }
  }
  EXPECT_GT(failAt, 10u) << "the read allocates too little to be a test";
}

std::string participant() { return "http://standards.ieee.org/downloads/11073/11073-10207-2017/participant"; }
std::string message() { return "http://standards.ieee.org/downloads/11073/11073-10207-2017/message"; }

TEST(XmlDocumentReader, ReadsACatalogueOrRunsOutOfMemoryWhereverAnAllocationFails) {
  const std::string texts =
      "<c xmlns:pm='" + participant() + "' xmlns:m='" + message() +
      "'>\n"
      "<pm:LocalizedText Ref='alarm.hr.high' Lang='en&#x2D;US' Version='2' TextWidth='m'>\n"
      "Heart rate<![CDATA[\r\ntoo high & more]]></pm:LocalizedText>\n"
      "<m:GetLocalizedTextResponse><m:Text Ref='label.spo2' Lang='de-DE'>SpO&#x2082;</m:Text>"
      "</m:GetLocalizedTextResponse>\n"
      "<LocalizedText Ref='misplaced'/><m:LocalizedText/></c>";
  failEachAllocationOf([&texts] { return readCatalogue(texts, "texts.xml"); });
  const std::string problems = "<c xmlns:pm='" + participant() +
                               "'>\n<pm:LocalizedText Version='x' TextWidth='huge'>a<b/></pm:LocalizedText>"
                               "<pm:LocalizedText Version=' 18446744073709551616 '/>\n<x:e/></c>";
  failEachAllocationOf([&problems] { return readCatalogue(problems, "problems.xml"); });
}

TEST(XmlDocumentReader, ReadsAnMdibOrRunsOutOfMemoryWhereverAnAllocationFails) {
  const std::string mdib =
      "<m:GetMdibResponse xmlns:m='" + message() + "' xmlns='" + participant() +
      "'>\n<Mds><Type><ConceptDescription Ref='alarm&#46;hr.high' Version='2' Lang='fr-FR'/>"
      "</Type><Manufacturer Lang='de-DE'>Beispiel <![CDATA[Medizin]]>technik</Manufacturer>"
      "<Label Ref='label.spo2' Version='v'/></Mds></m:GetMdibResponse>";
  failEachAllocationOf([&mdib] { return readMdibTexts(mdib, "mdib.xml"); });
}

TEST(XmlDocumentReader, ReadsXliffOrRunsOutOfMemoryWhereverAnAllocationFails) {
  const std::string xliff =
      "<x:xliff xmlns:x='urn:oasis:names:tc:xliff:document:1.2' version='1.2'>\n"
      "<x:file target-language='de-DE'><x:body>\n"
      "<x:trans-unit id='2.s.1.alarm&#46;heart.rate.high'><x:source>HR too high</x:source>"
      "<x:target>HF zu hoch</x:target></x:trans-unit>\n"
      "<x:trans-unit id='2.m.2.alarm.hr.high'>\n"
      "<x:target state='needs-translation'>a\nb</x:target></x:trans-unit>\n"
      "<x:trans-unit id='label.spo2'><x:target>SpO2</x:target></x:trans-unit>\n"
      "<x:trans-unit id='2.s.1.button.silence'>\n"
      "<x:target>Alarm <x:g id='1'>aus</x:g></x:target></x:trans-unit>\n"
      "</x:body></x:file><x:file target-language='de'/></x:xliff>";
  failEachAllocationOf([&xliff] { return readXliff(xliff, "de.xlf"); });
}

}  // namespace
