// SPDX-License-Identifier: Apache-2.0
// A document's way from its files to its outputs, with events made up in place of workers.
#include "supervisor/document_run.h"

#include <gtest/gtest.h>

#include "cli/supervisor/test_folder.h"
#include "exchange/files.h"

namespace {

using cli::Job;

class DocumentRunTest : public testing::Test {
 protected:
  DocumentRunTest() {
    std::filesystem::create_directory(scratch);
    cli::write_file(folder.path("scan.pdf"), "content");
  }

  cli::DocumentRun& open(int pages,
                         const std::vector<cli::Format>& formats = {cli::Format::kText}) {
    cli::InputDocument input{"scan.pdf", {folder.path("scan.pdf")}, {}};
    for (const cli::Format format : formats) input.targets.push_back({format, folder.path("out")});
    document.emplace(input, 1, setting);
    const std::optional<Job> job = document->next_job(1);
    EXPECT_EQ(job->kind, Job::Kind::kOpen);
    document->prepare(*job, scratch);
    cli::Opened opened;
    opened.pages.assign(static_cast<std::size_t>(pages), {300, 400});
    document->handle(*job, opened, scratch);
    document->handle(*job, cli::JobDone{}, scratch);
    return *document;
  }

  void finish(const Job& job, int page, const std::string& failure = "") {
    cli::PageRecord record;
    record.page = page;
    record.failure = failure;
    cli::write_page_record(scratch + "/" + cli::page_record_name(page), record);
    cli::PageFinished event;
    event.number = page;
    event.failure = failure;
    document->handle(job, event, scratch);
  }

  void finish_all(const Job& job) {
    for (const int page : job.pages) finish(job, page);
    document->handle(job, cli::JobDone{}, scratch);
  }

  std::optional<cli::PageRecord> record(int page) const {
    return cli::read_page_record(folder.path("document-1/" + cli::page_record_name(page)));
  }

  TestFolder folder;
  std::string scratch = folder.path("scratch");
  cli::Options options;
  cli::RunListener listener;
  cli::DocumentRun::Setting setting{options, folder.path(), listener, nullptr};
  std::optional<cli::DocumentRun> document;
};

TEST_F(DocumentRunTest, PagesAreHandedOutInWindowsAndInOrder) {
  cli::DocumentRun& run = open(5);
  EXPECT_EQ(run.waiting_pages(), 5);
  EXPECT_EQ(run.next_job(3)->pages, (std::vector<int>{1, 2, 3}));
  EXPECT_EQ(run.next_job(3)->pages, (std::vector<int>{4, 5}));
  EXPECT_FALSE(run.next_job(3).has_value());
}

TEST_F(DocumentRunTest, OutputsAreAssembledWhenAllPagesAreDone) {
  cli::DocumentRun& run = open(2);
  const Job first = *run.next_job(1);
  const Job second = *run.next_job(1);
  finish_all(second);
  EXPECT_FALSE(run.next_job(1).has_value());
  finish_all(first);
  const Job assembly = *run.next_job(1);
  EXPECT_EQ(assembly.kind, Job::Kind::kAssemble);
  const cli::Order order = run.prepare(assembly, scratch).order;
  EXPECT_EQ(std::get<cli::AssembleOrder>(order).document.pages,
            (std::vector<std::string>{"page-000001", "page-000002"}));
  cli::write_file(scratch + "/output-0", "text");
  run.handle(assembly, cli::JobDone{}, scratch);
  EXPECT_TRUE(run.is_assembled());
  EXPECT_EQ(cli::read_file(run.output_path(0)), "text");
}

TEST_F(DocumentRunTest, TheNextStepWaitsForTheWorkerThatMadeItPossible) {
  cli::InputDocument input{"scan.pdf", {folder.path("scan.pdf")}, {}};
  document.emplace(input, 1, setting);
  const Job opening = *document->next_job(1);
  cli::Opened opened;
  opened.pages = {{300, 400}};
  document->handle(opening, opened, scratch);
  EXPECT_FALSE(document->next_job(1).has_value()) << "another worker would be started for it";
  document->handle(opening, cli::JobDone{}, scratch);
  const Job page = *document->next_job(1);
  finish(page, 1);
  EXPECT_FALSE(document->next_job(1).has_value());
  document->handle(page, cli::JobDone{}, scratch);
  EXPECT_EQ(document->next_job(1)->kind, Job::Kind::kAssemble);
}

TEST_F(DocumentRunTest, ALostWindowGivesBackItsOtherPages) {
  cli::DocumentRun& run = open(6);
  const Job window = *run.next_job(4);
  finish(window, 1);
  run.handle_fault(window, 2, "the worker crashed");
  EXPECT_EQ(run.next_job(9)->pages, (std::vector<int>{3, 4, 5, 6})) << "in order, before the retry";
  const Job retry = *run.next_job(9);
  EXPECT_EQ(retry.pages, std::vector<int>{2});
  EXPECT_TRUE(retry.wants_fresh_worker);
}

TEST_F(DocumentRunTest, WithoutAPageToBlameTheFirstUnansweredOneIsBlamed) {
  cli::DocumentRun& run = open(3);
  const Job window = *run.next_job(3);
  finish(window, 1);
  run.handle_fault(window, 0, "the worker ended");
  EXPECT_EQ(run.next_job(3)->pages, std::vector<int>{3});
  EXPECT_EQ(run.next_job(3)->pages, std::vector<int>{2});
}

TEST_F(DocumentRunTest, APageThatFailsTwiceIsRecordedWithItsCause) {
  cli::DocumentRun& run = open(1);
  run.handle_fault(*run.next_job(1), 1, "the worker crashed");
  run.handle_fault(*run.next_job(1), 1, "the worker crashed again");
  ASSERT_TRUE(record(1).has_value());
  EXPECT_EQ(record(1)->failure, "the worker crashed again");
  EXPECT_EQ(record(1)->page_width, 300);
  EXPECT_EQ(run.next_job(1)->kind, Job::Kind::kAssemble);
  EXPECT_EQ(run.outcome().state, cli::DocumentState::kDeliveredWithFailedPages);
}

TEST_F(DocumentRunTest, APictureThatAWorkerLeftStandsForThePage) {
  cli::DocumentRun& run = open(1, {cli::Format::kPdf});
  cli::PageRecord picture;
  picture.page = 1;
  picture.jpeg = "a picture";
  for (const char* cause : {"the worker crashed", "the worker crashed again"}) {
    const Job job = *run.next_job(1);
    cli::write_page_record(scratch + "/" + cli::page_picture_name(1), picture);
    run.keep_picture(job, 1, scratch);
    run.handle_fault(job, 1, cause);
  }
  EXPECT_EQ(record(1)->failure, "the worker crashed again");
  EXPECT_EQ(record(1)->jpeg, "a picture");
  EXPECT_EQ(run.next_job(1)->kind, Job::Kind::kAssemble);
}

TEST_F(DocumentRunTest, APageIsGivenUpWhenItsTimeIsUsedUp) {
  options.page_timeout = 10;
  cli::DocumentRun& run = open(2);
  run.handle_fault(*run.next_job(1), 1, "no result", 10.0);
  EXPECT_EQ(record(1)->failure, "no result");
  run.handle_fault(*run.next_job(1), 2, "the worker crashed", 4.0);
  const Job retry = *run.next_job(1);
  EXPECT_EQ(retry.pages, std::vector<int>{2});
  EXPECT_EQ(retry.seconds_used, 4.0);
}

TEST_F(DocumentRunTest, ADocumentThatTakesAllItsTimeToOpenIsNotTriedAgain) {
  cli::InputDocument input{"scan.pdf", {folder.path("scan.pdf")}, {}};
  document.emplace(input, 1, setting);
  document->handle_fault(*document->next_job(1), 0, "no result", options.page_timeout);
  EXPECT_EQ(document->outcome().state, cli::DocumentState::kUnreadable);
}

TEST_F(DocumentRunTest, AnAnswerOfAJobThatWasTakenBackIsNotBelieved) {
  cli::DocumentRun& run = open(1);
  const Job first = *run.next_job(1);
  finish(first, 1, "refused");
  const Job retry = *run.next_job(1);
  run.handle(first, cli::JobDone{}, scratch);
  finish(first, 1);
  EXPECT_FALSE(record(1).has_value());
  finish_all(retry);
  EXPECT_TRUE(record(1).has_value());
}

TEST_F(DocumentRunTest, AWorkerThatForgetsAPageIsAtFault) {
  cli::DocumentRun& run = open(2);
  const Job window = *run.next_job(2);
  finish(window, 1);
  run.handle(window, cli::JobDone{}, scratch);
  EXPECT_EQ(run.next_job(2)->pages, std::vector<int>{2});
}

// A worker that was taken over says what it likes.
TEST_F(DocumentRunTest, AWorkerThatLeavesNothingIsAtFault) {
  cli::DocumentRun& run = open(1);
  cli::PageFinished finished;
  finished.number = 1;
  run.handle(*run.next_job(1), finished, scratch);
  const Job retry = *run.next_job(1);
  EXPECT_EQ(retry.pages, std::vector<int>{1});
  std::filesystem::create_directory(scratch + "/" + cli::page_record_name(1));
  run.handle(retry, finished, scratch);
  EXPECT_EQ(record(1)->failure, "the worker left no result");
  run.handle(*run.next_job(1), cli::JobDone{}, scratch);
  run.handle(*run.next_job(1), cli::JobDone{}, scratch);
  EXPECT_EQ(run.outcome().cause, "no outputs: the worker left no output");
}

TEST_F(DocumentRunTest, TooManyFailedPagesFailTheDocument) {
  options.max_failed_pages = {0, false};
  cli::DocumentRun& run = open(2);
  finish(*run.next_job(1), 1);
  run.handle_fault(*run.next_job(1), 2, "no");
  run.handle_fault(*run.next_job(1), 2, "no");
  EXPECT_TRUE(run.is_finished());
  EXPECT_EQ(run.outcome().state, cli::DocumentState::kFailed);
}

TEST_F(DocumentRunTest, OnlyTheChosenPagesAreDone) {
  options.pages = {{2, 3}, {7, 0}};
  cli::DocumentRun& run = open(8);
  EXPECT_EQ(run.next_job(9)->pages, (std::vector<int>{2, 3, 7, 8}));
}

TEST_F(DocumentRunTest, ADocumentThatCannotBeOpenedTwiceIsUnreadable) {
  cli::InputDocument input{"scan.pdf", {folder.path("scan.pdf")}, {}};
  document.emplace(input, 1, setting);
  document->handle_fault(*document->next_job(1), 0, "the worker crashed");
  const Job second = *document->next_job(1);
  EXPECT_TRUE(second.wants_fresh_worker);
  document->handle_fault(second, 0, "the worker crashed");
  EXPECT_EQ(document->outcome().state, cli::DocumentState::kUnreadable);
  EXPECT_EQ(document->outcome().cause, "the worker crashed");
}

TEST_F(DocumentRunTest, AssemblyIsTriedTwice) {
  cli::DocumentRun& run = open(1);
  finish_all(*run.next_job(1));
  run.handle_fault(*run.next_job(1), 0, "no room");
  const Job second = *run.next_job(1);
  EXPECT_EQ(second.kind, Job::Kind::kAssemble);
  run.handle_fault(second, 0, "no room");
  EXPECT_EQ(run.outcome().state, cli::DocumentState::kFailed);
  EXPECT_EQ(run.outcome().cause, "no outputs: no room");
}

}  // namespace
