#pragma once

namespace FTS {

class Workbook;

// Sheets of the workbook of results that others link to.
inline constexpr const char* ContentsSheet = "Contents";
inline constexpr const char* DirectEffectsSheet = "Direct Effects";
inline constexpr const char* FurtherEffectsSheet = "Further Effects";

/// A cell that leads back to the contents and covers so many further columns.
void WriteContentsLink(Workbook& out, int mergeAcross);

}  // namespace FTS
