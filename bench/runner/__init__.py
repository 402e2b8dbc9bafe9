# SPDX-License-Identifier: LGPL-2.1-or-later
"""Series of measurements with velkor-bench, and what they say."""
