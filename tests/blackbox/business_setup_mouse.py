"""A business is set up with the mouse."""

from person import run

import business_setup

if __name__ == "__main__":
    run(business_setup.with_mouse)
