# SPDX-License-Identifier: Apache-2.0
"""Pages of HTML about packages: one for each manifest, and an index of a store.

>>> from veskpackage import pages
>>> pages.write(["store"], "site")

or `python -m veskpackage.pages store -o site`. The pages are plain files that open from a disk and
ask for nothing from elsewhere. Needs Jinja2, which the rest of veskpackage does not.
"""

from ._folder import NotOurs
from ._sources import NoManifest
from ._store import Complaint, Written, write

__all__ = ["Complaint", "NoManifest", "NotOurs", "Written", "write"]
