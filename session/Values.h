#pragma once

#include "assetconnector/host/kiln/InterfaceRef.h"
#include "assetconnector/host/kiln/KilnUnknown.h"
#include "assetconnector/message/Description.h"
#include "reference_host/Counted.h"

#include <string>
#include <tuple>
#include <type_traits>
#include <utility>

/// What reading and writing of values share.
namespace Session {

/// The object behind a counted reference in a session: nothing but a name.
class NamedObject final : public ReferenceHost::Counted<KilnUnknown>
{
public:
    static Kiln::InterfaceRef<KilnUnknown> Make(std::string name)
    {
        return Kiln::InterfaceRef<KilnUnknown>::Retain(new NamedObject(std::move(name)));
    }

    const std::string& Name() const noexcept { return mName; }

private:
    explicit NamedObject(std::string name) : mName(std::move(name)) {}

    const std::string mName;
};

/// The sub-items of an asset item: the one member that makes a record a tree. Trees are read and written in
/// loops, whatever their depth.
using SubItemsRow = AC::Description::MemberRow<Ridge::AssetItemValues, Ridge::AssetItemList>;
constexpr SubItemsRow kSubItems =
    std::get<SubItemsRow>(AC::Description::Members<Ridge::AssetItemValues>::kRows);

template <class Row>
constexpr bool kIsSubItemsRow = std::is_same_v<std::decay_t<Row>, SubItemsRow>;

}  // namespace Session
