# SPDX-License-Identifier: Apache-2.0
"""How much is measured: in full, or a little of everything while trying out."""
import dataclasses


@dataclasses.dataclass(frozen=True)
class Plan:
    name: str
    runs: int  # of what is timed
    whole_pages: int  # of the document that is read through the library
    compare_pages: int  # of the document that all programs read
    throughput_pages: int
    sandbox_pages: int
    sandbox_pairs: int
    document_memory: tuple  # pages whose peak of memory is looked at
    producer_memory: tuple
    bench_options: tuple
    made_document: bool = True  # of 100 pages, which searchable_pdf_speed makes itself
    few_documents: bool = False


FULL = Plan('full', runs=3, whole_pages=100, compare_pages=36, throughput_pages=20,
            sandbox_pages=4, sandbox_pairs=31, document_memory=(1, 20, 100, 500),
            producer_memory=(50, 500, 1000, 2000, 5000),
            bench_options=('--benchmark_min_time=0.2',))
QUICK = Plan('quick', runs=2, whole_pages=2, compare_pages=2, throughput_pages=2, sandbox_pages=1,
             sandbox_pairs=2, document_memory=(1, 2, 4), producer_memory=(50, 200),
             bench_options=('--benchmark_min_time=0.02',), made_document=False,
             few_documents=True)
PLANS = {plan.name: plan for plan in (FULL, QUICK)}
