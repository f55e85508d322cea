#pragma once

namespace luming {

/// Further numbers that an ADO client shows, which only a server across the network gives.
namespace failure {
inline constexpr long kNoPermission = -2147217911;
inline constexpr long kLoginRefused = -2147217843;
inline constexpr long kTimeout = -2147217871;
}  // namespace failure

/// The number that an ADO client shows for an error of the database server.
/// @param native the server's own number, for example 208 for an object that is not there
long AdoNumberOf(long native);

}  // namespace luming
