# SPDX-License-Identifier: Apache-2.0
"""What bench/publish is made of: documents, measurements, records, and the page of figures."""
