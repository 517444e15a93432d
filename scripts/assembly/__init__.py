"""What measure_assemble.py is made of: passes with truth, ways to place them, and the score."""
