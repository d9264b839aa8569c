// SPDX-License-Identifier: Apache-2.0
#include "cells.h"

#include <gtest/gtest.h>

#include "page_text.h"
#include "plugins/tesseract/PageBuilding.h"

namespace {

using namespace tesseract_engine;

std::u32string codes(const std::vector<OCR_CHAR>& cells) {
  std::u32string text;
  for (const OCR_CHAR& cell : cells) text.push_back(cell.code);
  return text;
}

std::int64_t width(const OCR_CHAR& cell) {
  return cell.right - cell.left;
}
std::int64_t height(const OCR_CHAR& cell) {
  return cell.bottom - cell.top;
}

TEST(AdvanceCells, LettersOfAWordShareItsWidthAndAreTwiceAsHighAsWide) {
  Word uneven = word(U"mill", 100, 10);
  uneven.characters[0].box.right = 125;  // the m is wider than the rest
  uneven.characters[3].box.right = uneven.box.right = 148;
  const auto cells = advance_cells(line({uneven}));
  ASSERT_EQ(codes(cells), U"mill");
  for (std::size_t i = 0; i < cells.size(); ++i) {
    EXPECT_EQ(cells[i].left, 100 + 12 * static_cast<std::int64_t>(i));
    EXPECT_EQ(width(cells[i]), 12);
    EXPECT_EQ(height(cells[i]), 24);
  }
}

TEST(AdvanceCells, AllCharactersStandOnTheBottomOfTheLine) {
  const auto cells = advance_cells(
      line({word(U"Linux", 0, 10), word(U"系统", 50, 32), word(U"ok", 130, 9, true)}));
  ASSERT_EQ(cells.size(), 10U);
  for (const OCR_CHAR& cell : cells) EXPECT_EQ(cell.bottom, 50);
}

TEST(AdvanceCells, HanCharactersGetSquareCellsOfTheMedianPitchCentredOverTheirRun) {
  Word run = word(U"一二三四五", 200, 30);
  run.characters[1].box = {236, 10, 256, 40};  // a step of 31 and one of 29 among steps of 30
  const auto cells = advance_cells(line({run}));
  ASSERT_EQ(codes(cells), U"一二三四五");
  for (std::size_t i = 0; i < cells.size(); ++i) {
    EXPECT_EQ(cells[i].left, 200 + 30 * static_cast<std::int64_t>(i));
    EXPECT_EQ(width(cells[i]), 30);
    EXPECT_EQ(height(cells[i]), 30);
  }
}

TEST(AdvanceCells, APunctuationMarkAtTheEndOfARunStillGetsAWholeCell) {
  Word run = word(U"你好。", 0, 40);
  run.characters[2].box = {82, 30, 94, 40};
  const auto cells = advance_cells(line({run}));
  ASSERT_EQ(cells.size(), 3U);
  EXPECT_EQ(width(cells[2]), width(cells[0]));
  EXPECT_EQ(height(cells[2]), height(cells[0]));
}

TEST(AdvanceCells, PunctuationInACornerOfItsCellDoesNotShiftTheRun) {
  Word run = word(U"（你好。", 0, 30);
  run.characters[0].box = {20, 10, 29, 40};
  run.characters[3].box = {91, 32, 99, 40};
  const auto cells = advance_cells(line({run}));
  ASSERT_EQ(cells.size(), 4U);
  for (std::size_t i = 0; i < cells.size(); ++i) {
    EXPECT_EQ(cells[i].left, 30 * static_cast<std::int64_t>(i));
  }
}

TEST(AdvanceCells, ALoneHanCharacterIsAsLargeAsTheLineIsHigh) {
  const auto cells = advance_cells(line({word(U"边", 100, 36)}));
  ASSERT_EQ(cells.size(), 1U);
  EXPECT_EQ(width(cells[0]), 40);
  EXPECT_EQ(cells[0].left, 98);
}

TEST(AdvanceCells, OneBlankSpansTheGapBetweenLatinWords) {
  const auto cells = advance_cells(line({word(U"two", 0, 10), word(U"words", 44, 10, true)}));
  ASSERT_EQ(codes(cells), U"two words");
  EXPECT_EQ(cells[3].left, 30);
  EXPECT_EQ(cells[3].right, 44);
  EXPECT_EQ(height(cells[3]), 20) << "no higher than the type of the line";
}

TEST(AdvanceCells, ABlankGetsRoomWhereBoxesLeaveNone) {
  const auto cells = advance_cells(line({word(U"Version", 0, 10), word(U"2.4", 68, 10, true)}));
  ASSERT_EQ(codes(cells), U"Version 2.4");
  EXPECT_EQ(width(cells[7]), 4) << "a fifth of the em of the line";
}

TEST(AdvanceCells, NoBlankStandsBetweenHanCharacters) {
  const auto cells = advance_cells(line({word(U"汉字", 0, 30), word(U"文本", 66, 30, true)}));
  EXPECT_EQ(codes(cells), U"汉字文本");
}

TEST(AdvanceCells, RunsOfDifferentScriptsMeetWithoutASeam) {
  const auto cells =
      advance_cells(line({word(U"编号", 0, 30), word(U"8426", 66, 14), word(U"的学生", 128, 30)}));
  ASSERT_EQ(codes(cells), U"编号8426的学生");
  for (std::size_t i = 1; i < cells.size(); ++i) EXPECT_EQ(cells[i].left, cells[i - 1].right);
}

TEST(AdvanceCells, AWordOfTwoScriptsIsTakenApart) {
  Word mixed = word(U"第6", 0, 30);
  mixed.characters[1].box = {34, 10, 48, 40};
  mixed.box.right = 48;
  const auto cells = advance_cells(line({mixed, word(U"页共", 54, 30)}));
  ASSERT_EQ(codes(cells), U"第6页共");
  EXPECT_EQ(height(cells[0]), width(cells[0]));
  EXPECT_EQ(height(cells[1]), 2 * width(cells[1]));
}

TEST(AdvanceCells, AWideGapInHanTextStaysAGap) {
  const auto cells = advance_cells(line({word(U"目录", 0, 30), word(U"页码", 400, 30)}));
  ASSERT_EQ(codes(cells), U"目录页码");
  EXPECT_EQ(cells[1].right, 60);
  EXPECT_EQ(cells[2].left, 400);
}

TEST(AdvanceCells, TheEmptyPartOfAPunctuationMarkIsNoGap) {
  Word run = word(U"b，而且", 0, 30);
  run.characters[1].box = {34, 32, 36, 40};
  run.characters[2].box = {67, 10, 83, 40};
  const auto cells = advance_cells(line({run}));
  ASSERT_EQ(cells.size(), 4U);
  for (std::size_t i = 2; i < cells.size(); ++i) EXPECT_EQ(cells[i].left, cells[i - 1].right);
}

TEST(AdvanceCells, ALigatureIsOneCellForEachLetter) {
  EXPECT_EQ(codes(advance_cells(line({word(U"oﬃce", 0, 24)}))), U"office");
}

TEST(AdvanceCells, ACharacterBeyondTheBasicPlaneIsOneReplacementCharacter) {
  EXPECT_EQ(codes(advance_cells(line({word(U"\U00020000的", 0, 30)}))), U"\xFFFD的");
}

TEST(AdvanceCells, VerticalLinesHaveSquareCellsFromTopToBottom) {
  Line vertical;
  vertical.vertical = true;
  vertical.box = {300, 100, 340, 220};
  vertical.words = {word(U"竖", 300, 40), word(U"排文", 300, 40, true)};
  const auto cells = advance_cells(vertical);
  ASSERT_EQ(codes(cells), U"竖排文");
  for (std::size_t i = 0; i < cells.size(); ++i) {
    EXPECT_EQ(cells[i].top, 100 + 40 * static_cast<std::int64_t>(i));
    EXPECT_EQ(height(cells[i]), 40);
    EXPECT_EQ(width(cells[i]), 40);
    EXPECT_EQ(cells[i].left, 300);
  }
}

TEST(AdvanceCells, CellsSpellTheTextOfTheLine) {
  const Line mixed =
      line({word(U"在", 0, 30), word(U"Debian", 40, 14, true), word(U"中，", 130, 30),
            word(U"use", 200, 14, true), word(U"it.", 250, 14, true)});
  EXPECT_EQ(codes(advance_cells(mixed)), line_text(mixed));
}

TEST(AdvanceCells, CellsAreNeverEmptyHoweverNarrowTheBoxes) {
  Word flat = word(U"iiii", 10, 0);
  const auto cells = advance_cells(line({flat, word(U"一二", 10, 0)}));
  ASSERT_EQ(cells.size(), 6U);
  for (const OCR_CHAR& cell : cells) {
    EXPECT_GT(width(cell), 0);
    EXPECT_GT(height(cell), 0);
  }
}

TEST(AdvanceCells, QuotationMarksThatTheFontDrawsAnEmWideTakeTwoShares) {
  const auto cells = advance_cells(line({word(U"“abc”", 0, 14)}));
  ASSERT_EQ(codes(cells), U"“abc”");
  EXPECT_EQ(width(cells[0]), 2 * width(cells[1]));
  for (const OCR_CHAR& cell : cells) EXPECT_EQ(height(cell), height(cells[0]));
}

TEST(AdvanceCells, WordOfNarrowLettersStaysNearTheSizeOfTheLine) {
  const auto cells = advance_cells(
      line({word(U"wide", 0, 12), word(U"ill", 60, 5, true), word(U"words", 100, 12, true)}));
  EXPECT_EQ(height(cells[0]), 24);
  EXPECT_EQ(height(cells[5]), 19);
  const auto tight = advance_cells(
      line({word(U"wide", 0, 12), word(U"ill", 60, 5, true), word(U"words", 80, 12, true)}));
  EXPECT_LE(tight[7].right, 80) << "room is left for the blank";
}

TEST(AdvanceCells, PitchOfThePageServesLinesWithoutOneOfTheirOwn) {
  Word run = word(U"边。", 100, 30);
  run.characters[1].box = {132, 30, 140, 40};
  const auto cells = advance_cells(line({run}), 33);
  ASSERT_EQ(cells.size(), 2U);
  EXPECT_EQ(height(cells[0]), 33);
  EXPECT_EQ(width(cells[1]), 33);
  EXPECT_EQ(han_pitch({{{}, {line({word(U"一二三", 0, 31)})}}}), 31);
}

TEST(AdvanceCells, PitchBeyondSenseIsThatOfThePage) {
  Word far_apart = word(U"之行", 100, 30);
  far_apart.characters[1].box = {230, 10, 260, 40};
  const auto cells = advance_cells(line({far_apart}), 33);
  ASSERT_EQ(cells.size(), 2U);
  EXPECT_EQ(height(cells[0]), 33);
  EXPECT_EQ(cells[0].left, 99) << "centred over its character";
  EXPECT_EQ(cells[1].left, 229);
}

TEST(AdvanceCells, ADrawingReadAsACharacterDoesNotLowerTheLine) {
  Line with_drawing = line({word(U"图", 0, 30), word(U"文字在此", 50, 30)});
  with_drawing.words[0].characters[0].box = with_drawing.words[0].box = {0, 0, 30, 90};
  with_drawing.box = {0, 0, 170, 90};
  for (const OCR_CHAR& cell : advance_cells(with_drawing)) EXPECT_EQ(cell.bottom, 40);
}

TEST(AdvanceCells, CharactersFollowFromLeftToRightWhereverTheirBoxesLie) {
  // A comma whose box lies within the next square, and one whose box reaches over the next word.
  Word late = word(U"破损,即便", 0, 30);
  late.characters[2].box = {95, 30, 97, 40};
  for (std::size_t i = 3; i < 5; ++i) {
    late.characters[i].box.left -= 5;
    late.characters[i].box.right -= 5;
  }
  Word broad = word(U"ab，", 0, 14);
  broad.characters[2].box = {30, 10, 300, 40};
  for (const auto& cells :
       {advance_cells(line({late})), advance_cells(line({broad, word(U"Perl", 34, 14)}))}) {
    for (std::size_t i = 1; i < cells.size(); ++i) {
      EXPECT_GT(cells[i].left, cells[i - 1].left + 1) << i;
    }
  }
}

}  // namespace
