// Sizes of the records' images in the channel file, the same on every target. Log lines and dumps print these.
#pragma once

namespace channel {

inline constexpr int list_image_size = 460032;
inline constexpr int network_image_size = 416;
inline constexpr int transponder_image_size = 336;
inline constexpr int service_image_size = 312;
inline constexpr int group_image_size = 104;

}  // namespace channel
