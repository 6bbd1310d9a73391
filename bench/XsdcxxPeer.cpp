// Data binding with code that xsdcxx makes of assets.xsd.

#include "assets.hxx"
#include "bench/Codec.h"

#include <boost/make_shared.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>

#include <sstream>

namespace Bench {
namespace {

using xml_schema::flags;

Operation Parse(const Work& work)
{
    return [&text = work.utf8] {
        xercesc::MemBufInputSource source(reinterpret_cast<const XMLByte*>(text.data()), text.size(), "text");
        benchmark::DoNotOptimize(
            Binding::browserMessage(source, flags::dont_initialize | flags::dont_validate));
    };
}

Binding::AssetItem Bound(const PlainAsset<std::string>& asset, int order)
{
    using Binding::Identifier;
    const auto& [path, mediaInfo, parent, id, start, duration, rate, name, type, metadata] = asset;
    Binding::AssetItem item(Binding::Path{path}, Identifier{mediaInfo}, Identifier{id}, std::stoll(start),
                            std::stoll(duration), rate, name, type, metadata);
    item.parentAssetID(Identifier{parent});
    item.order(order);
    return item;
}

Operation Serialize(const Work& work)
{
    const auto message = boost::make_shared<Binding::Message>();
    message->assetItemList(Binding::AssetItemList());
    int order = 0;
    for (const PlainAsset<std::string>& asset : PlainAssetsOf(work))
        message->assetItemList()->assetItem().push_back(Bound(asset, ++order));
    return [message] {
        std::ostringstream out;
        Binding::hostNotification(out, *message, xml_schema::namespace_infomap(), "UTF-8",
                                  flags::dont_initialize | flags::dont_pretty_print);
        benchmark::DoNotOptimize(out.str());
    };
}

const AddedCodec kXsdcxx({"xsdcxx", {Parse, false, true}, {Serialize}});

}  // namespace
}  // namespace Bench
