// product_demo.cpp - reads a product record into the sample binding, changes it, writes it as text and gzip bytes,
// reads those back.
//
// usage: product_demo [product.xml]   (default: the bundled product/sample-product.xml)
// Ends by showing the chained message a broken document gives.
#include <clocale>
#include <cstdio>
#include <string>

#include "kvxml/foundation/KvException.h"
#include "kvxml/values/BinaryData.h"
#include "kvxml/values/Conversions.h"
#include "product.h"

using namespace KvXmlLib10;
using kvexample::CProduct;

namespace {

std::string DefaultSamplePath() {
#ifdef KVXML_PRODUCT_SAMPLE
    return KVXML_PRODUCT_SAMPLE;
#else
    // Next to this source file.
    const std::string source = __FILE__;
    const std::string::size_type slash = source.find_last_of('/');
    return (slash == std::string::npos ? std::string() : source.substr(0, slash + 1)) + "product/sample-product.xml";
#endif
}

void Print(const CProduct& product) {
    std::printf("  id          %s\n", CConversions::ui8ToString(product.GetId()).c_str());
    std::printf("  sku         %s\n", product.GetSku().c_str());
    std::printf("  name        %s\n", product.GetName().c_str());
    if (product.IsDescriptionNil())
        std::printf("  description (nil)\n");
    else if (product.IsDescriptionSet())
        std::printf("  description %s\n", product.GetDescription().c_str());
    std::printf("  price       %s %s\n", product.GetPrice().ToString().c_str(),
                kvexample::ProductCurrencyToString(static_cast<int32_t>(product.GetCurrency())));
    std::printf("  status      %s\n", kvexample::ProductStatusToString(static_cast<int32_t>(product.GetStatus())));
    std::printf("  released    %s\n", CConversions::dateToString(product.GetReleased()).c_str());
    if (product.IsLastUpdatedSet())
        std::printf("  lastUpdated %s\n", CConversions::datetimeToString(product.GetLastUpdated()).c_str());
    if (product.IsWeightNil())
        std::printf("  weight      (nil)\n");
    else if (product.IsWeightSet())
        std::printf("  weight      %s kg\n", CConversions::r8ToString(product.GetWeight()).c_str());
    std::printf("  stock       %u\n", static_cast<unsigned>(product.GetStock()));
    if (product.IsWarrantySet())
        std::printf("  warranty    %s\n", CConversions::durationToString(product.GetWarranty()).c_str());
    std::printf("  featured    %s\n", product.GetFeatured() ? "yes" : "no");
}

}  // namespace

int main(int argc, char** argv) {
    // Text inside the library is in the local code page; make that UTF-8.
    std::setlocale(LC_ALL, "C.UTF-8");
    const std::string path = argc > 1 ? argv[1] : DefaultSamplePath();
    try {
        CProduct product;
        product.FromXmlFile(path.c_str());
        std::printf("Read %s:\n", path.c_str());
        Print(product);

        product.SetPrice(CDecimal("199.90"));
        product.SetStock(product.GetStock() - 1);
        product.SetWeight(7.25);
        product.SetLastUpdated(CDateTime("2024-06-02T18:00:00Z"));
        std::printf("\nPrice cut to 199.90, one sold, weighed at 7.25 kg.\n");

        // Write the record's namespace as the default one, as the sample does.
        CXmlSerializationContext context;
        context.SetDefaultNamespaceURI(product.GetTargetNamespace().c_str());
        const std::string text = product.ToXml(true, true, EOL_LF, context);
        std::printf("\nAs XML text:\n%s", text.c_str());

        const CBinaryData plain = product.ToXmlStream(true, true, Encoding_UTF8, EOL_LF, context);
        const CBinaryData gzip = product.ToXmlStream(true, true, Encoding_UTF8, EOL_LF, context, Compression_GZip);
        std::printf("\nAs bytes: %u of UTF-8, %u gzip-compressed.\n", static_cast<unsigned>(plain.GetLength()),
                    static_cast<unsigned>(gzip.GetLength()));

        CProduct fromText;
        fromText.FromXml(text.c_str());
        CProduct fromGzip;
        fromGzip.FromXmlStream(gzip);
        const bool same =
            fromText.ToXml(true, true, EOL_LF, context) == text && fromGzip.ToXml(true, true, EOL_LF, context) == text;
        std::printf("Read back from text and from gzip: price %s, stock %u, %s.\n",
                    fromGzip.GetPrice().ToString().c_str(), static_cast<unsigned>(fromGzip.GetStock()),
                    same ? "identical documents" : "DOCUMENTS DIFFER");
        if (!same) return 1;

        // A broken record: the price is not a number.
        std::string broken = text;
        const std::string::size_type price = broken.find("199.9");
        broken.replace(price, 5, "cheap");
        try {
            CProduct bad;
            bad.FromXml(broken.c_str());
            std::printf("\nThe broken record was accepted?!\n");
            return 1;
        } catch (const CKvException& error) {
            std::printf("\nA record whose price reads \"cheap\" is refused:\n%s\n", error.GetFullMessage().c_str());
        }
    } catch (const CKvException& error) {
        std::fprintf(stderr, "product_demo: %s\n", error.GetFullMessage().c_str());
        return 1;
    }
    return 0;
}
