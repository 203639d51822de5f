#pragma once

namespace wainscot {

/// Numbers of event kinds and of the interests in them. A kind is a group with details; classify by the group
/// first: the low bits mean different things in different groups.
namespace EventKind {

// Details of the mouse group.
inline constexpr int up = 1;
inline constexpr int down = 2;
inline constexpr int move = 4;
inline constexpr int wheelTurn = 8;
inline constexpr int sideTurn = 16;
inline constexpr int left = 32;
inline constexpr int right = 64;
inline constexpr int middle = 128;

// Groups.
inline constexpr int mouse = 256;
inline constexpr int keyPress = 512;
inline constexpr int keyRelease = 1024;
inline constexpr int timer = 4096;
inline constexpr int zoom = 8192;
inline constexpr int messageGroup = 16384;
inline constexpr int groupMask = mouse | keyPress | keyRelease | timer | zoom | messageGroup;

inline constexpr int leftPress = mouse | left | down;   // 290
inline constexpr int leftRelease = mouse | left | up;   // 289
inline constexpr int rightPress = mouse | right | down; // 322
inline constexpr int rightRelease = mouse | right | up; // 321
inline constexpr int mouseMove = mouse | move;          // 260
inline constexpr int mouseWheel = mouse | wheelTurn;    // 264
inline constexpr int sideWheel = mouse | sideTurn;      // 272
inline constexpr int message = messageGroup | 1;        // 16385

} // namespace EventKind
} // namespace wainscot
