import sys

from .sweep import main

sys.exit(main())
