#pragma once

#include "assetconnector/message/Description.h"

#include <tuple>
#include <type_traits>

/// What reading and writing of values share.
namespace Session {

/// The sub-items of an asset item: the one member that makes a record a tree. Trees are read and written in
/// loops, whatever their depth.
using SubItemsRow = AC::Description::MemberRow<Ridge::AssetItemValues, Ridge::AssetItemList>;
constexpr SubItemsRow kSubItems =
    std::get<SubItemsRow>(AC::Description::Members<Ridge::AssetItemValues>::kRows);

template <class Row>
constexpr bool kIsSubItemsRow = std::is_same_v<std::decay_t<Row>, SubItemsRow>;

}  // namespace Session
