// XmlObjectBaseFastInfoset.cpp - the Fast Infoset writing entry points of the object base.
#include "kvxml/core/XmlObjectBase.h"
#include "kvxml/fastinfoset/FastInfosetWriter.h"
#include "kvxml/foundation/KvException.h"
#include "kvxml/output/BinaryStream.h"
#include "kvxml/output/KvZip.h"

namespace KvXmlLib10 {

CBinaryData CXmlObjectBase::ToFastInfosetStream(FInfoDecl decl, const CXmlSerializationContext& context,
                                                CompressionType compression) const {
    CBinaryStream stream;
    {
        CFastInfosetWriter writer(context.GetFIContext(), stream);
        writer.Open();
        writer.WriteStartDocument(decl);
        ToXmlWriter(writer, context);
        writer.WriteEndDocument();
        writer.Close();
    }
    CBinaryData data = stream.GetBinaryStream();
    if (compression != Compression_None) CKvZip::CompressData(data, compression);
    return data;
}

void CXmlObjectBase::ToFastInfosetFile(const char* fileName, FInfoDecl decl, const CXmlSerializationContext& context,
                                       CompressionType compression) const {
    if (compression == Compression_Zlib)
        throw CKvException("ZLIB Compression only available for To Stream methods.");
    CBinaryData data = ToFastInfosetStream(decl, context, compression);
    CFileBinaryStream file(fileName, Encoding_None, data);
    file.ToFile();
}

}  // namespace KvXmlLib10
