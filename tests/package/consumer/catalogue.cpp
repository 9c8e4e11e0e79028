// Calls into every exported function and class of the installed catalogue
// library, so that a symbol left hidden fails the link and a broken install
// fails the run.
#include <Zalt/Catalogue/CheckCatalogue.h>
#include <Zalt/Catalogue/ReadCatalogue.h>
#include <Zalt/Catalogue/TextWidthTokens.h>
#include <Zalt/Catalogue/WriteCatalogue.h>

#include <iostream>
#include <string>
#include <vector>

int main() {
  const std::string catalogue =
      "<c xmlns:pm='http://standards.ieee.org/downloads/11073/11073-10207-2017/participant'>\n"
      "<pm:LocalizedText Ref='hr' Lang='de-DE' Version='3' TextWidth='m'>Herz</pm:LocalizedText>\n"
      "<pm:LocalizedText Ref='hr' Lang='de-DE' Version='3'>Herz</pm:LocalizedText></c>";
  const auto catalogueTexts = Zalt::Catalogue::readCatalogue(catalogue, "texts.xml");
  const auto& texts = catalogueTexts.texts;
  const auto check = Zalt::Catalogue::checkCatalogue(catalogueTexts);
  const auto written = Zalt::Catalogue::readCatalogue(
      Zalt::Catalogue::writeCatalogue(Zalt::Catalogue::mdibTexts(texts)), "written.xml");

  std::string error;
  try {
    Zalt::Catalogue::readCatalogueFiles({"no-such-catalogue.xml"});
  } catch (const Zalt::Exception& e) {
    error = e.what();
  }

  const bool works =
      texts.size() == 2 &&
      catalogueTexts.location(texts[1]) == Zalt::Catalogue::SourceLocation{"texts.xml", 3, 1} &&
      check.findings.empty() && check.kept.size() == 2 &&
      Zalt::Catalogue::keptTexts(catalogueTexts, check) ==
          std::vector<Tovra::Mdib::LocalizedText>{texts[1].text, texts[0].text} &&
      Zalt::Catalogue::textWidthTokenList() == "xs, s, m, l, xl, xxl" &&
      std::string(name(Zalt::Catalogue::Finding::Kind::Dropped)) == "dropped" &&
      Zalt::Catalogue::textWidthFromToken("m") == texts[0].text.textWidth() &&
      Zalt::Catalogue::mdibTexts(written.texts) == Zalt::Catalogue::mdibTexts(texts) &&
      error.rfind("no-such-catalogue.xml: cannot be read", 0) == 0;
  std::cout << (works ? "catalogue consumer: installed package works\n"
                      : "catalogue consumer: installed package is broken\n");
  return works ? 0 : 1;
}
